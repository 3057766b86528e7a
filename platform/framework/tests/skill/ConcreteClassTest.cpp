#include "TestSkill.hpp"

#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <gtest/gtest.h>

#include <typeinfo>

namespace corvane::workbench::testing {
namespace {

TEST(ConcreteClass, AnswersFromItsIdentity) {
    const auto& machine = Machine::elementClass();
    EXPECT_EQ(machine.name(), "Machine");
    EXPECT_EQ(machine.uuid(), utils::core::Uuid::fromRawData({2}));
    EXPECT_EQ(machine.description(), u"a machine");
    EXPECT_EQ(machine.displayName(), u"Machine");
    EXPECT_EQ(machine.shortName(), "Ma");
    EXPECT_EQ(machine.classCode(), 2);
}

TEST(ConcreteClass, TranslatesItsTextsWheneverItIsAsked) {
    const auto& machine = Machine::elementClass();
    i18n::setTranslator([](std::string_view context, std::string_view text) {
        EXPECT_EQ(context, "workbench::skill::Element::Class");
        return std::optional(text == "a machine" ? std::u16string(u"eine Maschine")
                                                 : std::u16string(u"Maschine"));
    });
    EXPECT_EQ(machine.description(), u"eine Maschine");
    EXPECT_EQ(machine.displayName(), u"Maschine");
    EXPECT_EQ(machine.name(), "Machine");
    EXPECT_EQ(machine.shortName(), "Ma");
    i18n::setTranslator({});
    EXPECT_EQ(machine.displayName(), u"Machine");
}

TEST(ConcreteClass, AcceptsTheClassesOfItsList) {
    const auto& station = Station::elementClass();
    const auto& machine = Machine::elementClass();
    EXPECT_TRUE(station.acceptsChild(station));
    EXPECT_TRUE(station.acceptsChild(machine));
    EXPECT_FALSE(machine.acceptsChild(station));
    EXPECT_FALSE(machine.acceptsChild(machine));
}

TEST(ElementFactory, CreatesElementsInTheirDefaultState) {
    const auto element = Machine::elementClass().factory().createElement();
    const auto* const machine = element->as<Machine>();
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(machine->speed, 7);
    EXPECT_EQ(machine->modelElement(), nullptr);
}

TEST(ElementFactory, ClonesAnElementsOwnFields) {
    const auto original = make<Machine>();
    as<Machine>(*original).speed = 12;
    as<Machine>(*original).label = u"fast";
    as<Machine>(*original).feeder = original->makeReference();

    const auto clone = Machine::elementClass().factory().cloneElement(*original->getSkillElement());
    auto* const machine = clone->as<Machine>();
    ASSERT_NE(machine, nullptr);
    EXPECT_EQ(machine->speed, 12);
    EXPECT_EQ(machine->label, u"fast");
    EXPECT_EQ(machine->feeder.element(), original.get());
    EXPECT_EQ(machine->modelElement(), nullptr);
    machine->speed = 13;
    EXPECT_EQ(as<Machine>(*original).speed, 12);
}

TEST(ElementFactory, RefusesToCloneAnotherClass) {
    const Station station;
    EXPECT_THROW(static_cast<void>(Machine::elementClass().factory().cloneElement(station)),
                 std::bad_cast);
}

} // namespace
} // namespace corvane::workbench::testing
