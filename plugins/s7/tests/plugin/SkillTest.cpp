#include "plugin/Skill.hpp"

#include "plugin/ElementClasses.hpp"

#include <gtest/gtest.h>

#include <typeinfo>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

static_assert(std::is_base_of_v<skill::Skill, Skill>);
static_assert(std::is_base_of_v<skill::Skill::Class, SkillClass>);

std::vector<const skill::Skill::Class*> registered() {
    std::vector<const skill::Skill::Class*> classes;
    skill::Skill::Class::forEachRegistered(
        [&](const skill::Skill::Class& entry) { classes.push_back(&entry); });
    return classes;
}

const skill::Skill::Class& skillClass() { return *registered().at(0); }

TEST(Skill, IsTheOneThatRegistersItself) {
    ASSERT_EQ(registered().size(), 1U);
    EXPECT_NE(dynamic_cast<const SkillClass*>(&skillClass()), nullptr);
}

TEST(Skill, HasItsNameAndUuid) {
    EXPECT_EQ(skillClass().name(), "S7");
    EXPECT_EQ(skillClass().uuid().toString(), "0f149f70-c1fe-4a32-a3d2-0ed86370f99a");
}

TEST(Skill, RegistersItsElementClassesInAFixedOrder) {
    skill::ElementClassRegistrar registrar;
    skillClass().registerElementClasses(registrar);
    const std::vector<const skill::Element::Class*> expected = {
        &plcClass(), &commandClass(), &dataBlockClass(), &itemClass(), &structClass()};
    EXPECT_EQ(registrar.classes(), expected);
}

TEST(Skill, IsMadeAnewByEachCall) {
    const auto first = skillClass().createSkill();
    const auto second = skillClass().createSkill();
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    const skill::Skill& made = *first;
    EXPECT_EQ(typeid(made), typeid(Skill));
}

TEST(Skill, HasPlcsAloneAtItsTop) {
    EXPECT_TRUE(skillClass().isTopLevelElementClass(plcClass()));
    for (const auto* const other :
         {&commandClass(), &dataBlockClass(), &itemClass(), &structClass()})
        EXPECT_FALSE(skillClass().isTopLevelElementClass(*other)) << other->name();
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
