#include "Probe.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace corvane::workbench::testing {
namespace {

class ObserverTest : public ::testing::Test {
protected:
    /// An observer that writes its name down.
    [[nodiscard]] std::shared_ptr<void> observeAs(std::string name) {
        return probe_.observe(
            [this, name = std::move(name)](PropertyId, Action) { told_.push_back(name); });
    }

    Log publish() {
        told_.clear();
        probe_.publish(PropertyId(probe_.speed));
        return told_;
    }

    Probe probe_;
    Log told_;
};

TEST_F(ObserverTest, AllAreToldInTheOrderOfTheirComing) {
    const auto a = observeAs("a");
    const auto b = observeAs("b");
    EXPECT_EQ(publish(), (Log{"a", "b"}));
}

TEST_F(ObserverTest, ToldNoMoreWhenTheHandleIsGone) {
    auto a = observeAs("a");
    const auto b = observeAs("b");
    a.reset();
    EXPECT_EQ(publish(), Log{"b"});
    EXPECT_EQ(publish(), Log{"b"});
}

TEST_F(ObserverTest, ACopyOfTheHandleKeepsItAlive) {
    auto a = observeAs("a");
    const auto copy = a;
    a.reset();
    EXPECT_EQ(publish(), Log{"a"});
}

TEST_F(ObserverTest, TheHandleMayOutliveTheController) {
    std::shared_ptr<void> handle;
    {
        Probe probe;
        handle = probe.observe([](auto, auto) {});
    }
    handle.reset();
    EXPECT_EQ(handle, nullptr);
}

TEST_F(ObserverTest, MayGoWhileItIsTold) {
    std::shared_ptr<void> own;
    own = probe_.observe([&, text = std::string("long enough to be on the heap")](auto, auto) {
        own.reset();
        told_.push_back(text);
    });
    const auto b = observeAs("b");
    EXPECT_EQ(publish(), (Log{"long enough to be on the heap", "b"}));
    EXPECT_EQ(publish(), Log{"b"});
}

TEST_F(ObserverTest, ThatAnotherTakesAwayIsNotTold) {
    std::shared_ptr<void> second;
    const auto first = probe_.observe([&](auto, auto) { second.reset(); });
    second = observeAs("second");
    EXPECT_EQ(publish(), Log{});
}

TEST_F(ObserverTest, ThatComesDuringANotificationIsToldOfTheNext) {
    std::vector<std::shared_ptr<void>> late;
    const auto first = probe_.observe([&](auto, auto) {
        // Many, so that the list of observers must move.
        while (late.size() != 20)
            late.push_back(observeAs("late"));
    });
    EXPECT_EQ(publish(), Log{});
    EXPECT_EQ(publish(), Log(20, "late"));
}

TEST_F(ObserverTest, MayPublishAgain) {
    int depth = 0;
    const auto again = probe_.observe([&](PropertyId property, Action) {
        told_.push_back("depth " + std::to_string(depth));
        if (++depth < 3)
            probe_.publish(property);
        --depth;
    });
    const auto b = observeAs("b");
    EXPECT_EQ(publish(), (Log{"depth 0", "depth 1", "depth 2", "b", "b", "b"}));
}

TEST_F(ObserverTest, MayComeAndGoInANestedNotification) {
    std::shared_ptr<void> brief = observeAs("brief");
    std::shared_ptr<void> late;
    bool nested = false;
    const auto outer = probe_.observe([&](PropertyId property, Action) {
        if (std::exchange(nested, true))
            return;
        brief.reset();
        late = observeAs("late");
        probe_.publish(property);
    });
    const auto b = observeAs("b");
    EXPECT_EQ(publish(), (Log{"brief", "b", "late", "b"}));
}

} // namespace
} // namespace corvane::workbench::testing
