#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/ReferenceLog.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace corvane::workbench::testing {
namespace {

using host::ReferenceLog;

/// /line/pump and /line/valve, with a reference to each of the three.
class ReferenceLogTest : public ::testing::Test {
protected:
    host::Model model_;
    model::Element& line_ = add<Station>(model_.root(), "line");
    model::Element& pump_ = add<Machine>(line_, "pump");
    model::Element& valve_ = add<Machine>(line_, "valve");
    model::ElementReference toLine_ = line_.makeReference();
    model::ElementReference toPump_ = pump_.makeReference();
    model::ElementReference toValve_ = valve_.makeReference();
    ReferenceLog log_;
};

TEST_F(ReferenceLogTest, NotesWhatRefersToAnElementAndBelowIt) {
    EXPECT_TRUE(log_.empty());
    EXPECT_TRUE(log_.elements().empty());
    log_.collect(line_);
    log_.add(toPump_, pump_);
    EXPECT_FALSE(log_.empty());
    std::vector<const model::Element*> expected{&line_, &pump_, &valve_};
    std::ranges::sort(expected);
    EXPECT_EQ(log_.elements(), expected);
    log_.clear();
    EXPECT_TRUE(log_.empty());
}

TEST_F(ReferenceLogTest, AnElementSaysWhetherItIsReferredTo) {
    EXPECT_TRUE(host::isReferenced(pump_));
    toPump_ = {};
    EXPECT_FALSE(host::isReferenced(pump_));
}

TEST_F(ReferenceLogTest, TakesReferencesAwayAndGivesThemBack) {
    log_.collect(pump_);
    constexpr std::array<std::size_t, 1> kPosition{0};
    auto taken = host::takeChildren(line_, kPosition);
    for (int round = 0; round != 2; ++round) {
        log_.detach(model_);
        EXPECT_EQ(toPump_.elementOrNull(), nullptr);
        EXPECT_EQ(toPump_.text(), "/line/pump");
        EXPECT_EQ(model_.references().size(), 1u);
        log_.attach();
        EXPECT_EQ(toPump_.elementOrNull(), &pump_);
        EXPECT_EQ(model_.references().size(), 0u);
    }
    EXPECT_EQ(toValve_.elementOrNull(), &valve_);
    host::putChildren(line_, std::move(taken), kPosition);
    EXPECT_EQ(toPump_.text(), "/line/pump");
}

TEST_F(ReferenceLogTest, GivesBackWhatHasFoundAnotherElement) {
    log_.collect(pump_);
    auto gone = host::takeChildren(line_, std::array<std::size_t, 1>{0});
    log_.detach(model_);
    auto& other = add<Machine>(line_, "pump");
    model_.resolveReferences();
    EXPECT_EQ(toPump_.elementOrNull(), &other);
    log_.detach(model_); // it refers to another element: nothing to take away
    EXPECT_EQ(toPump_.elementOrNull(), &other);
    log_.attach();
    EXPECT_EQ(toPump_.elementOrNull(), &pump_);
    EXPECT_FALSE(host::isReferenced(other));
}

TEST_F(ReferenceLogTest, NotesWhatIsResolved) {
    const auto waiting = model_.references().reference("/line/motor");
    auto& motor = add<Machine>(line_, "motor");
    EXPECT_TRUE(model_.resolveReferences(&log_));
    EXPECT_EQ(log_.elements(), std::vector<const model::Element*>{&motor});
    log_.detach(model_);
    EXPECT_EQ(waiting.elementOrNull(), nullptr);
    EXPECT_EQ(waiting.text(), "/line/motor");
    EXPECT_EQ(model_.references().size(), 1u);
}

TEST_F(ReferenceLogTest, KeepsReferencesAlive) {
    log_.collect(pump_);
    toPump_ = {};
    EXPECT_TRUE(host::isReferenced(pump_));
    log_.detach(model_);
    EXPECT_FALSE(host::isReferenced(pump_));
    EXPECT_EQ(model_.references().size(), 1u);
    log_.clear();
    EXPECT_EQ(model_.references().size(), 0u);
}

TEST_F(ReferenceLogTest, GivesBackEveryReferenceOfAnElement) {
    const auto parsed = model_.references().reference("/line/pump");
    model_.resolveReferences();
    log_.collect(line_);
    log_.detach(model_);
    log_.attach();
    EXPECT_EQ(toPump_.elementOrNull(), &pump_);
    EXPECT_EQ(parsed.elementOrNull(), &pump_);
    EXPECT_EQ(toLine_.elementOrNull(), &line_);
    EXPECT_EQ(parsed, toPump_);
}

} // namespace
} // namespace corvane::workbench::testing
