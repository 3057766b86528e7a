#include "TestSkill.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

namespace corvane::workbench::testing {
namespace {

using model::ElementReference;

std::string saved(const ElementReference& reference) {
    utils::io::StringOutputStream stream;
    {
        utils::json::encoder::Document document(stream, utils::json::encoder::Format::compact);
        auto members = document.object();
        reference.saveTo(members, "feeder");
    }
    return stream.take();
}

/// /line/cell/pump, and /line/valve beside it.
class ElementReferenceTest : public ::testing::Test {
protected:
    /// The element that a reference resolves to; null when it is missing.
    static model::Element* target(const ElementReference& reference) {
        EXPECT_EQ(reference.elementOrNull(), reference.element().value_or(nullptr));
        return reference.elementOrNull();
    }

    host::Model model_;
    model::Element& line_ = add<Station>(model_.root(), "line");
    model::Element& cell_ = add<Station>(line_, "cell");
    model::Element& pump_ = add<Machine>(cell_, "pump");
    model::Element& valve_ = add<Machine>(line_, "valve");
};

TEST_F(ElementReferenceTest, TheEmptyOneRefersToNothing) {
    const ElementReference none;
    EXPECT_TRUE(none.empty());
    EXPECT_EQ(none.text(), "");
    EXPECT_EQ(saved(none), R"({"feeder":""})");
    ASSERT_FALSE(none.element().has_value());
    EXPECT_EQ(none.element().error(), u"the referenced element “” does not exist");
}

TEST_F(ElementReferenceTest, RefersToItsElement) {
    const auto reference = pump_.makeReference();
    EXPECT_FALSE(reference.empty());
    EXPECT_EQ(reference.element(), &pump_);
    EXPECT_EQ(reference.text(), "/line/cell/pump");
    EXPECT_EQ(saved(reference), R"({"feeder":"/line/cell/pump"})");
}

TEST_F(ElementReferenceTest, FollowsRenames) {
    const auto reference = pump_.makeReference();
    EXPECT_EQ(reference.text(), "/line/cell/pump");
    host::rename(pump_, "a/b");
    EXPECT_EQ(reference.text(), "/line/cell/a~1b");
    host::rename(line_, "hall");
    EXPECT_EQ(reference.text(), "/hall/cell/a~1b");
    EXPECT_EQ(reference.element(), &pump_);
}

TEST_F(ElementReferenceTest, IsEqualToAnotherToTheSameElement) {
    const auto reference = pump_.makeReference();
    const auto parsed = model_.references().reference("/line/cell/pump");
    EXPECT_NE(parsed, reference);
    model_.resolveReferences();
    EXPECT_EQ(parsed, reference);
    EXPECT_EQ(pump_.makeReference(), reference);
    EXPECT_NE(valve_.makeReference(), reference);
    EXPECT_NE(ElementReference(), reference);
    EXPECT_EQ(ElementReference(), ElementReference());
}

TEST_F(ElementReferenceTest, CopiesAndMovesShareTheElement) {
    auto first = pump_.makeReference();
    ElementReference second(first);
    ElementReference third(std::move(first));
    EXPECT_TRUE(first.empty()); // NOLINT(bugprone-use-after-move): moved means empty
    EXPECT_EQ(second.element(), &pump_);
    EXPECT_EQ(third.element(), &pump_);
    second = valve_.makeReference();
    EXPECT_EQ(second.element(), &valve_);
    const auto& alias = third;
    third = alias;
    EXPECT_EQ(third.element(), &pump_);
    third = ElementReference();
    EXPECT_TRUE(third.empty());
}

TEST_F(ElementReferenceTest, RemovalLeavesTheLastPath) {
    const auto toCell = cell_.makeReference();
    const auto toPump = pump_.makeReference();
    const auto toValve = valve_.makeReference();
    host::rename(pump_, "big pump");
    auto removed = host::removeChild(line_, cell_);

    EXPECT_EQ(target(toCell), nullptr);
    EXPECT_EQ(toCell.text(), "/line/cell");
    EXPECT_EQ(toPump.element().error(),
              u"the referenced element “/line/cell/big pump” does not exist");
    EXPECT_EQ(saved(toPump), R"({"feeder":"/line/cell/big pump"})");
    EXPECT_EQ(toValve.element(), &valve_);

    removed.reset();
    EXPECT_EQ(toPump.text(), "/line/cell/big pump");
    EXPECT_EQ(model_.references().size(), 2u);
}

TEST_F(ElementReferenceTest, ResolvesToWhatStandsThereAgain) {
    const auto toPump = pump_.makeReference();
    host::removeChild(line_, cell_).reset();
    EXPECT_FALSE(model_.resolveReferences());

    auto& cell = add<Station>(line_, "cell");
    EXPECT_FALSE(model_.resolveReferences());
    auto& pump = add<Machine>(cell, "pump");
    EXPECT_TRUE(model_.resolveReferences());
    EXPECT_EQ(toPump.element(), &pump);
    EXPECT_EQ(model_.references().size(), 0u);
    host::rename(pump, "p");
    EXPECT_EQ(toPump.text(), "/line/cell/p");
}

TEST_F(ElementReferenceTest, SeveralMissingOnesOfOneTextAllResolve) {
    const auto first = model_.references().reference("/line/motor");
    auto& motor = add<Machine>(line_, "motor");
    const auto second = motor.makeReference();
    EXPECT_TRUE(model_.resolveReferences());
    // Two data objects refer to the motor now, and wait for it under one text.
    host::removeChild(line_, motor).reset();
    const auto third = model_.references().reference("/line/motor");
    EXPECT_EQ(first, second);
    EXPECT_EQ(first, third);
    auto& again = add<Machine>(line_, "motor");
    EXPECT_TRUE(model_.resolveReferences());
    for (const auto* reference : {&first, &second, &third})
        EXPECT_EQ(reference->element(), &again);
}

TEST_F(ElementReferenceTest, OneThatGoesLeavesTheOthers) {
    auto first = model_.references().reference("/line/valve");
    model_.resolveReferences();
    auto second = valve_.makeReference();
    auto third = model_.references().reference("/line/valve");
    model_.resolveReferences();
    second = ElementReference();
    EXPECT_EQ(target(first), &valve_);
    first = ElementReference();
    EXPECT_EQ(target(third), &valve_);
    third = ElementReference();
    EXPECT_EQ(valve_.makeReference().element(), &valve_);
}

TEST_F(ElementReferenceTest, BetweenElementsThatGoTogether) {
    as<Machine>(pump_).feeder = valve_.makeReference();
    as<Machine>(valve_).feeder = pump_.makeReference();
    as<Machine>(valve_).operated = valve_.makeReference();
    host::removeChild(line_, valve_).reset();
    EXPECT_EQ(as<Machine>(pump_).feeder.text(), "/line/valve");
    host::removeChild(model_.root(), line_).reset();
    EXPECT_EQ(model_.references().size(), 0u);
}

TEST_F(ElementReferenceTest, OutlivesItsModel) {
    ElementReference found;
    ElementReference waiting;
    {
        host::Model model;
        auto& line = add<Station>(model.root(), "hall");
        found = add<Machine>(line, "pump").makeReference();
        waiting = model.references().reference("/hall/motor");
        as<Machine>(*line.findChild("pump")).feeder = found;
    }
    EXPECT_EQ(found.text(), "/hall/pump");
    EXPECT_EQ(target(found), nullptr);
    EXPECT_EQ(waiting.text(), "/hall/motor");
    EXPECT_EQ(ElementReference(found), found);
}

TEST_F(ElementReferenceTest, ToAnElementThatStandsNowhere) {
    ElementReference reference;
    {
        const auto element = make<Machine>();
        reference = element->makeReference();
        EXPECT_EQ(reference.element(), element.get());
    }
    EXPECT_EQ(target(reference), nullptr);
    EXPECT_FALSE(reference.empty());
}

TEST_F(ElementReferenceTest, FollowsTheSuccessorOfAnElement) {
    const auto toPump = pump_.makeReference();
    auto successor = make<Machine>();
    const auto toSuccessor = successor->makeReference();
    static_cast<void>(host::replaceSkillElement(pump_, *successor));
    successor.reset();
    EXPECT_EQ(toPump.element(), &pump_);
    EXPECT_EQ(toSuccessor.element(), &pump_);
    EXPECT_EQ(toSuccessor, toPump);
    EXPECT_EQ(toSuccessor.text(), "/line/cell/pump");
}

TEST_F(ElementReferenceTest, AValidatorSeesWhatComesAndGoes) {
    auto& machine = as<Machine>(pump_);
    machine.feeder = valve_.makeReference();
    configureAndPublish(machine);
    EXPECT_EQ(machine.localPropertyErrorCount(), 0u);

    host::removeChild(line_, valve_).reset();
    machine.validateReferences();
    ASSERT_NE(machine.error(bindings::PropertyId(machine.feeder)), nullptr);
    EXPECT_EQ(*machine.error(bindings::PropertyId(machine.feeder)),
              u"the referenced element “/line/valve” does not exist");

    add<Machine>(line_, "valve");
    model_.resolveReferences();
    machine.validateReferences();
    EXPECT_EQ(machine.localPropertyErrorCount(), 0u);
}

} // namespace
} // namespace corvane::workbench::testing
