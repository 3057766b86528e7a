#include "TestSkill.hpp"

#include <corvane/workbench/skill/Skill.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <type_traits>
#include <vector>

namespace corvane::workbench::testing {
namespace {

class SmallSkill final : public skill::Skill {};

class SmallSkillClass final : public skill::Skill::Class {
public:
    [[nodiscard]] std::string_view name() const override { return "Small"; }
    [[nodiscard]] utils::core::Uuid uuid() const override { return {}; }
    void registerElementClasses(skill::ElementClassRegistrar& registrar) const override {
        registrar.add(Machine::elementClass());
        registrar.add(Station::elementClass());
    }
    [[nodiscard]] std::unique_ptr<skill::Skill> createSkill() const override {
        return std::make_unique<SmallSkill>();
    }
    [[nodiscard]] bool isTopLevelElementClass(const skill::Element::Class& entry) const override {
        return &entry == &Station::elementClass();
    }
};

using Classes = std::vector<const skill::Skill::Class*>;

Classes registered() {
    Classes classes;
    skill::Skill::Class::forEachRegistered(
        [&](const skill::Skill::Class& entry) { classes.push_back(&entry); });
    return classes;
}

TEST(SkillClass, IsKnownAsLongAsItLives) {
    EXPECT_EQ(registered(), Classes{});
    {
        const SmallSkillClass one;
        EXPECT_EQ(registered(), Classes{&one});
    }
    EXPECT_EQ(registered(), Classes{});
}

// Modules are unloaded in any order: the first, one in the middle, the last, the only one.
TEST(SkillClass, MayGoInAnyOrder) {
    constexpr std::size_t kOrders[][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2},
                                          {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (const auto& order : kOrders) {
        std::optional<SmallSkillClass> classes[3];
        Classes expected;
        for (auto& entry : classes)
            expected.push_back(&entry.emplace());
        EXPECT_EQ(registered(), expected);
        for (const auto index : order) {
            std::erase(expected, &*classes[index]);
            classes[index].reset();
            EXPECT_EQ(registered(), expected);
        }
    }
}

TEST(SkillClass, ComesBehindThoseThatAreKnown) {
    std::optional<SmallSkillClass> first(std::in_place);
    const SmallSkillClass second;
    first.reset();
    first.emplace();
    EXPECT_EQ(registered(), (Classes{&second, &*first}));
}

TEST(SkillClass, HandsItsElementClassesToTheRegistrar) {
    const SmallSkillClass small;
    skill::ElementClassRegistrar registrar;
    EXPECT_TRUE(registrar.classes().empty());
    small.registerElementClasses(registrar);
    EXPECT_EQ(registrar.classes(), (std::vector<const skill::Element::Class*>{
                                       &Machine::elementClass(), &Station::elementClass()}));
    EXPECT_NE(small.createSkill(), nullptr);
}

static_assert(!std::is_copy_constructible_v<SmallSkillClass>);
static_assert(!std::is_copy_constructible_v<SmallSkill>);
// Registration happens while a module loads, where nothing could catch a failure.
static_assert(std::is_nothrow_default_constructible_v<SmallSkillClass>);

} // namespace
} // namespace corvane::workbench::testing
