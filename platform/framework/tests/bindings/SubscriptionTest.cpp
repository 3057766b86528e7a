#include "Probe.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace corvane::workbench::testing {
namespace {

/// What the reactions of a probe write down when its speed is published.
Log reactions(Probe& probe) {
    probe.log.clear();
    probe.publishValue(PropertyId(probe.speed));
    probe.log.pop_back(); // the notification behind them
    return probe.takeLog();
}

/// A probe with two reactions to its speed, in this order.
class SubscriptionTest : public ::testing::Test {
protected:
    SubscriptionTest() { configureBoth(); }

    void configureBoth() {
        configure(probe_, [&](auto& context) {
            first_ = context.template onChange<&Probe::speedChanged>(probe_, probe_.speed);
            second_ = context.template onChange<&Probe::speedChangedToo>(probe_, probe_.speed);
        });
    }

    Probe probe_;
    Subscription first_;
    Subscription second_;
    const Log both_{"speed changed", "speed changed too"};
};

TEST_F(SubscriptionTest, ReactionsComeInTheOrderOfSubscription) {
    EXPECT_EQ(reactions(probe_), both_);
}

TEST_F(SubscriptionTest, ReactsToItsOwnPropertyOnly) {
    probe_.publish(PropertyId(probe_.limit));
    EXPECT_EQ(probe_.takeLog(), Log{"raised limit value"});
}

TEST_F(SubscriptionTest, EndsWhenReset) {
    EXPECT_TRUE(static_cast<bool>(first_));
    first_.reset();
    EXPECT_FALSE(static_cast<bool>(first_));
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
    first_.reset();
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
}

TEST_F(SubscriptionTest, EndsWhenDestroyed) {
    {
        const Subscription last(std::move(second_));
    }
    EXPECT_EQ(reactions(probe_), Log{"speed changed"});
}

TEST_F(SubscriptionTest, MovesWithItsOwner) {
    Subscription owner(std::move(first_));
    EXPECT_TRUE(static_cast<bool>(owner));
    EXPECT_FALSE(static_cast<bool>(first_)); // NOLINT(bugprone-use-after-move): moved means empty
    first_.reset();
    EXPECT_EQ(reactions(probe_), both_);

    Subscription another;
    another = std::move(owner);
    EXPECT_EQ(reactions(probe_), both_);
    another.reset();
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
}

TEST_F(SubscriptionTest, ReplacingEndsTheOneBefore) {
    first_ = std::move(second_);
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
    first_.reset();
    EXPECT_EQ(reactions(probe_), Log{});
}

TEST_F(SubscriptionTest, AssigningItToItselfKeepsIt) {
    Subscription& alias = first_;
    first_ = std::move(alias);
    EXPECT_EQ(reactions(probe_), both_);
}

TEST_F(SubscriptionTest, ACopyKeepsNothingAlive) {
    {
        const Subscription copy(first_); // NOLINT(performance-unnecessary-copy-initialization)
        EXPECT_FALSE(static_cast<bool>(copy));
    }
    EXPECT_EQ(reactions(probe_), both_);
}

TEST_F(SubscriptionTest, DetachedItLivesAsLongAsItsController) {
    first_.detach();
    EXPECT_FALSE(static_cast<bool>(first_));
    first_.reset();
    EXPECT_EQ(reactions(probe_), both_);
}

TEST_F(SubscriptionTest, MayEndWhileItReacts) {
    probe_.inReaction = [&] { first_.reset(); };
    EXPECT_EQ(reactions(probe_), both_);
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
}

TEST_F(SubscriptionTest, ThatAnEarlierReactionEndsReactsNoMore) {
    probe_.inReaction = [&] { second_.reset(); };
    EXPECT_EQ(reactions(probe_), Log{"speed changed"});
}

TEST_F(SubscriptionTest, IsMadeAnewByTheNextConfiguration) {
    configureBoth();
    EXPECT_EQ(reactions(probe_), both_);
    first_.reset();
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
    configureBoth();
    EXPECT_EQ(reactions(probe_), both_);
}

TEST_F(SubscriptionTest, OfAnEarlierConfigurationEndsNoneOfTheNewOne) {
    Subscription later;
    configure(probe_, [&](auto& context) {
        later = context.template onChange<&Probe::speedChangedToo>(probe_, probe_.speed);
    });
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
    first_.reset(); // had the number that the new one has now
    second_.reset();
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
    later.reset();
    EXPECT_EQ(reactions(probe_), Log{});
}

TEST_F(SubscriptionTest, ThatEndsBeforeTheConfigurationDoesStaysEnded) {
    configure(probe_, [&](auto& context) {
        first_ = context.template onChange<&Probe::speedChanged>(probe_, probe_.speed);
        second_ = context.template onChange<&Probe::speedChangedToo>(probe_, probe_.speed);
        first_.reset();
    });
    EXPECT_EQ(reactions(probe_), Log{"speed changed too"});
}

TEST(Subscription, ControllersOfAKindEndTheirOwn) {
    Probe probes[2];
    Subscription subscriptions[2];
    for (int i = 0; i != 2; ++i)
        configure(probes[i], [&](auto& context) {
            subscriptions[i] =
                context.template onChange<&Probe::speedChanged>(probes[i], probes[i].speed);
        });
    subscriptions[0].reset();
    EXPECT_EQ(reactions(probes[0]), Log{});
    EXPECT_EQ(reactions(probes[1]), Log{"speed changed"});
}

TEST(Subscription, ThereAreThirtyTwoToAController) {
    Probe probe;
    std::vector<Subscription> subscriptions;
    PropertyConfigurationContext context;
    context.begin(probe);
    for (int i = 0; i != 32; ++i)
        subscriptions.push_back(context.onChange<&Probe::limitChanged>(probe, probe.limit));
    EXPECT_THROW(static_cast<void>(context.onChange<&Probe::limitChanged>(probe, probe.limit)),
                 std::logic_error);
    context.commit();

    subscriptions.back().reset();
    probe.publishValue(PropertyId(probe.limit));
    EXPECT_EQ(std::ranges::count(probe.log, "limit changed"), 31);
}

TEST(Subscription, OfNothingIsEmpty) {
    Subscription none;
    EXPECT_FALSE(static_cast<bool>(none));
    none.reset();
    none.detach();
    EXPECT_FALSE(static_cast<bool>(none));
}

} // namespace
} // namespace corvane::workbench::testing
