#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/skill/Skill.hpp>
#include <corvane/workbench/ui/InfoField.hpp>

#include <gtest/gtest.h>

#include <functional>
#include <thread>

// What only a build that looks can show.
#if defined(CORVANE_CHECK_OWNER)

namespace corvane::workbench::testing {
namespace {

/// One way to touch the model.
struct Touch {
    const char* name;
    std::function<void(model::Element& station, model::Element& machine)> run;
};

void PrintTo(const Touch& touch, std::ostream* stream) { *stream << touch.name; }

const Touch kTouches[] = {
    {"Addition", [](auto& station, auto&) { add<Machine>(station, "N"); }},
    {"Removal",
     [](auto& station, auto& machine) { static_cast<void>(host::removeChild(station, machine)); }},
    {"Renaming", [](auto&, auto& machine) { host::rename(machine, "N"); }},
    {"Reference", [](auto&, auto& machine) { static_cast<void>(machine.makeReference()); }},
    {"SkillElement", [](auto&, auto& machine) { static_cast<void>(machine.getSkillElement()); }},
    {"TextOfAClass",
     [](auto&, auto&) { static_cast<void>(Machine::elementClass().displayName()); }},
    {"Loading", [](auto&, auto&) { skill::Skill::Class::forEachRegistered([](const auto&) {}); }},
};

class OwnerTest : public ::testing::Test {
protected:
    // A process of its own for each: a copy of this one would lack the other thread.
    OwnerTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    host::Model model_;
    model::Element& station_ = add<Station>(model_.root(), "S");
    model::Element& machine_ = add<Machine>(station_, "M");
};

class TouchTest : public OwnerTest, public ::testing::WithParamInterface<Touch> {};

TEST_P(TouchTest, RefusesAStranger) {
    EXPECT_DEATH(std::thread([this] { GetParam().run(station_, machine_); }).join(),
                 "the model is touched by a thread that does not own it");
    GetParam().run(station_, machine_);
}

INSTANTIATE_TEST_SUITE_P(Owner, TouchTest, ::testing::ValuesIn(kTouches),
                         [](const auto& touch) { return touch.param.name; });

TEST_F(OwnerTest, RefusesAStrangerWhoPublishes) {
    auto& machine = as<Machine>(machine_);
    configureAndPublish(machine);
    EXPECT_DEATH(std::thread([&] { machine.assign(machine.speed, 9); }).join(),
                 "does not own it: .*PropertyController");
}

TEST_F(OwnerTest, RefusesAStrangerWhoAsksAControl) {
    auto& machine = as<Machine>(machine_);
    const ui::InfoField field("label", {},
                              machine.propertyHandle(bindings::PropertyId(machine.label)),
                              [&] { return machine.label; });
    EXPECT_DEATH(std::thread([&] { static_cast<void>(field.value()); }).join(),
                 "does not own it: .*ControlFunction");
}

TEST_F(OwnerTest, RefusesAStrangerWhoCopiesAReference) {
    const auto reference = machine_.makeReference();
    EXPECT_DEATH(std::thread([&] { static_cast<void>(model::ElementReference(reference)); }).join(),
                 "does not own it: .*ElementReference");
}

} // namespace
} // namespace corvane::workbench::testing

#endif
