#include "TestSkill.hpp"

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <gtest/gtest.h>

#include <vector>

namespace corvane::workbench::testing {
namespace {

using Positions = std::vector<std::size_t>;

/// A station with children "0", "1" and so on.
class ChildPositionsTest : public ::testing::Test {
protected:
    void fill(std::size_t count) {
        for (std::size_t i = 0; i != count; ++i)
            add<Machine>(line_, std::to_string(i));
    }

    host::Model model_;
    model::Element& line_ = add<Station>(model_.root(), "line");
};

/// Every set of places in a list of `count`, the empty one and the whole included.
std::vector<Positions> allSubsets(std::size_t count) {
    std::vector<Positions> subsets;
    for (unsigned bits = 0; bits != 1U << count; ++bits) {
        auto& positions = subsets.emplace_back();
        for (std::size_t i = 0; i != count; ++i)
            if ((bits >> i & 1U) != 0)
                positions.push_back(i);
    }
    return subsets;
}

TEST_F(ChildPositionsTest, ChildrenComeBackToWhereTheyWere) {
    fill(5);
    for (const auto& positions : allSubsets(5)) {
        auto taken = host::takeChildren(line_, positions);
        ASSERT_EQ(taken.size(), positions.size());
        EXPECT_EQ(line_.childElements().size(), 5 - positions.size());
        for (std::size_t i = 0; i != taken.size(); ++i) {
            EXPECT_EQ(taken[i]->name(), std::to_string(positions[i]));
            EXPECT_EQ(taken[i]->parentElement(), nullptr);
            EXPECT_EQ(taken[i]->tree(), nullptr);
            EXPECT_EQ(line_.findChild(taken[i]->name()), nullptr);
        }
        host::putChildren(line_, std::move(taken), positions);
        ASSERT_EQ(namesOf(line_), "0,1,2,3,4,");
    }
}

TEST_F(ChildPositionsTest, LongListsFindTheirNamesAfterwards) {
    fill(60);
    const Positions positions{0, 7, 8, 30, 59};
    for (int round = 0; round != 2; ++round) {
        ASSERT_NE(line_.findChild("30"), nullptr); // the index stands
        auto taken = host::takeChildren(line_, positions);
        EXPECT_EQ(line_.findChild("30"), nullptr);
        EXPECT_EQ(line_.findChild("31"), line_.childElements()[27].get());
        host::putChildren(line_, std::move(taken), positions);
        for (std::size_t i = 0; i != 60; ++i)
            ASSERT_EQ(line_.findChild(std::to_string(i)), line_.childElements()[i].get());
    }
}

TEST_F(ChildPositionsTest, ANameThatIsTakenMeanwhileGetsANumber) {
    fill(2);
    auto taken = host::takeChildren(line_, Positions{0});
    add<Machine>(line_, "0");
    host::putChildren(line_, std::move(taken), Positions{0});
    EXPECT_EQ(namesOf(line_), "0 2,1,0,");
}

TEST_F(ChildPositionsTest, ChildrenCanGoElsewhere) {
    fill(3);
    auto& hall = add<Station>(model_.root(), "hall");
    const auto reference = line_.findChild("1")->makeReference();
    EXPECT_EQ(reference.text(), "/line/1");
    auto taken = host::takeChildren(line_, Positions{1});
    host::putChildren(hall, std::move(taken), Positions{0});
    EXPECT_EQ(namesOf(line_), "0,2,");
    EXPECT_EQ(reference.text(), "/hall/1");
    EXPECT_EQ(model_.findElement("/hall/1"), reference.elementOrNull());
}

TEST_F(ChildPositionsTest, ChildrenCanGoToTheTop) {
    fill(1);
    auto taken = host::takeChildren(line_, Positions{0});
    host::putChildren(model_.root(), std::move(taken), Positions{0});
    EXPECT_EQ(namesOf(model_.root()), "0,line,");
    EXPECT_EQ(model_.findElement("/0")->parentElement(), nullptr);
}

} // namespace
} // namespace corvane::workbench::testing
