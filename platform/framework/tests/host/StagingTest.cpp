#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Staging.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace corvane::workbench::testing {
namespace {

using host::Staging;

/// /line with a pump, below which elements are staged.
class StagingTest : public ::testing::Test {
protected:
    model::Element& stage(std::string_view name) { return staging_->append(make<Station>(), name); }

    host::Model model_;
    model::Element& line_ = add<Station>(model_.root(), "line");
    model::Element& pump_ = add<Machine>(line_, "pump");
    std::optional<Staging> staging_{std::in_place, line_};
};

TEST_F(StagingTest, StagedElementsSeeTheTreeWhichDoesNotKnowThem) {
    auto& cell = stage("cell");
    auto& motor = add<Machine>(cell, "motor");
    EXPECT_EQ(&staging_->target(), &line_);
    EXPECT_EQ(cell.parentElement(), &line_);
    EXPECT_EQ(motor.findAncestor<Station>(), cell.getSkillElement());
    EXPECT_EQ(cell.findAncestor<Station>(), line_.getSkillElement());
    EXPECT_EQ(motor.path(), "/line/cell/motor");
    EXPECT_EQ(motor.getSkillElement()->primaryKey(), "line.cell.motor");
    EXPECT_EQ(motor.tree(), &model_);
    EXPECT_EQ(motor.depth(), 3u);

    EXPECT_EQ(namesOf(line_), "pump,");
    EXPECT_EQ(model_.findElement("/line/cell"), nullptr);
}

TEST_F(StagingTest, NamesAreUniqueAmongTheStagedOnes) {
    EXPECT_EQ(stage("pump").name(), "pump"); // that of the tree does not count yet
    EXPECT_EQ(stage("pump").name(), "pump 2");
    EXPECT_EQ(staging_->elements().size(), 2u);
    EXPECT_EQ(staging_->find("pump 2"), staging_->elements()[1].get());
    EXPECT_EQ(staging_->find("cell"), nullptr);
}

TEST_F(StagingTest, BelowTheTopHasNoParentElement) {
    Staging top(model_.root());
    auto& hall = top.append(make<Station>(), "hall");
    EXPECT_EQ(hall.parentElement(), nullptr);
    EXPECT_EQ(hall.path(), "/hall");
    EXPECT_EQ(hall.depth(), 1u);
}

TEST_F(StagingTest, DroppingItLeavesTheTreeAsItWas) {
    auto& cell = stage("cell");
    as<Machine>(add<Machine>(cell, "motor")).feeder = pump_.makeReference();
    as<Machine>(pump_).feeder = cell.makeReference();
    const auto epoch = model_.epoch();
    staging_.reset();
    EXPECT_EQ(namesOf(line_), "pump,");
    EXPECT_EQ(model_.epoch(), epoch);
    EXPECT_EQ(as<Machine>(pump_).feeder.text(), "/line/cell");
    EXPECT_FALSE(as<Machine>(pump_).feeder.element().has_value());
    EXPECT_EQ(pump_.makeReference().element(), &pump_);
}

TEST_F(StagingTest, ReferencesFollowReleasedElementsToTheirPlace) {
    auto& cell = stage("pump");
    const auto toCell = cell.makeReference();
    const auto toMotor = add<Machine>(cell, "motor").makeReference();
    EXPECT_EQ(toMotor.text(), "/line/pump/motor");

    auto released = staging_->release();
    EXPECT_TRUE(staging_->elements().empty());
    ASSERT_EQ(released.size(), 1u);
    host::appendChild(line_, std::move(released[0]), "pump");
    EXPECT_EQ(cell.name(), "pump 2");
    EXPECT_EQ(toCell.text(), "/line/pump 2");
    EXPECT_EQ(toMotor.text(), "/line/pump 2/motor");
    EXPECT_EQ(model_.findElement("/line/pump 2/motor"), *toMotor.element());
}

TEST_F(StagingTest, ReferencesToASuccessorGetThePathOfWhatItReplaces) {
    auto& successor = staging_->append(make<Machine>(), "new pump");
    const auto reference = successor.makeReference();
    EXPECT_EQ(reference.text(), "/line/new pump");
    static_cast<void>(host::replaceSkillElement(pump_, successor));
    EXPECT_EQ(reference.elementOrNull(), &pump_);
    EXPECT_EQ(reference.text(), "/line/pump");
}

TEST_F(StagingTest, ChildrenCanBeReleasedFromTheirParent) {
    auto& cell = stage("cell");
    auto& motor = add<Machine>(cell, "motor");
    EXPECT_TRUE(Staging::releaseChildren(motor).empty());
    auto children = Staging::releaseChildren(cell);
    ASSERT_EQ(children.size(), 1u);
    EXPECT_TRUE(cell.childElements().empty());
    EXPECT_EQ(cell.findChild("motor"), nullptr);
    host::appendChild(line_, std::move(children[0]), motor.name());
    EXPECT_EQ(motor.path(), "/line/motor");
}

TEST_F(StagingTest, AReleasedElementCanBeCalledByAnotherName) {
    stage("cell");
    const auto released = staging_->release();
    Staging::tryName(*released[0], "cell 7");
    EXPECT_EQ(released[0]->getSkillElement()->name(), "cell 7");
}

TEST_F(StagingTest, MarksWhatHasMetItsSuccessor) {
    EXPECT_FALSE(Staging::isPaired(pump_));
    Staging::setPaired(pump_, true);
    EXPECT_TRUE(Staging::isPaired(pump_));
    Staging::setPaired(pump_, false);
    EXPECT_FALSE(Staging::isPaired(pump_));
}

TEST_F(StagingTest, NothingIsStagedDeeperThanTheLimit) {
    auto* lowest = &line_;
    while (lowest->depth() != model::Element::kMaxDepth - 1)
        lowest = &add<Station>(*lowest, "s");
    Staging staging(*lowest);
    auto& last = staging.append(make<Station>(), "last");
    EXPECT_EQ(last.depth(), model::Element::kMaxDepth);
    EXPECT_THROW(add<Machine>(last, "too deep"), std::runtime_error);

    auto& bottom = add<Station>(*lowest, "bottom");
    EXPECT_THROW(Staging(bottom).append(make<Station>(), "too deep"), std::runtime_error);
}

} // namespace
} // namespace corvane::workbench::testing
