#include <corvane/utils/memory/Pool.hpp>
#include <corvane/utils/thread/Owner.hpp>

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <thread>
#include <vector>

namespace corvane::utils::thread {
namespace {

TEST(Owner, IsTheMainThreadAtFirst) {
    EXPECT_TRUE(ownsModel());
    bool owns = true;
    std::thread([&] { owns = ownsModel(); }).join();
    EXPECT_FALSE(owns);
}

TEST(Owner, OnTheWayTheModelBelongsToNobody) {
    Handover handover;
    handover.give();
    EXPECT_FALSE(ownsModel());
    handover.take();
    EXPECT_TRUE(ownsModel());
}

// A value without a lock goes to and fro: each thread sees what the other one made of it.
TEST(Owner, TheModelGoesToAnotherThreadAndBack) {
    constexpr int kRounds = 1'000;
    Handover there;
    Handover back;
    std::vector<int> model;
    bool ownedThere = true;
    std::thread other([&] {
        for (int round = 0; round != kRounds; ++round) {
            there.take();
            ownedThere = ownedThere && ownsModel();
            model.push_back(2 * round + 1);
            back.give();
        }
    });
    bool ownedHere = true;
    for (int round = 0; round != kRounds; ++round) {
        model.push_back(2 * round);
        there.give();
        back.take();
        ownedHere = ownedHere && ownsModel();
    }
    other.join();
    EXPECT_TRUE(ownedThere);
    EXPECT_TRUE(ownedHere);
    std::vector<int> expected;
    for (int number = 0; number != 2 * kRounds; ++number)
        expected.push_back(number);
    EXPECT_EQ(model, expected);
}

TEST(Owner, WhoHasNoPatienceGetsNothingThatIsNotGiven) {
    Handover there;
    Handover back;
    std::thread other([&] {
        there.take();
        back.give();
    });
    EXPECT_FALSE(back.takeWithin(std::chrono::milliseconds(1)));
    EXPECT_TRUE(ownsModel());
    there.give();
    EXPECT_TRUE(back.takeWithin(std::chrono::minutes(1)));
    EXPECT_TRUE(ownsModel());
    other.join();
}

// What only a build that looks can show.
#if defined(CORVANE_CHECK_OWNER)

class OwnerDeathTest : public testing::Test {
protected:
    // A process of its own for each: a copy of this one would lack the other threads.
    OwnerDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

    static constexpr const char* kMessage = "the model is touched by a thread that does not own it";
};

TEST_F(OwnerDeathTest, AStrangerMayNotTakeFromThePool) {
    EXPECT_DEATH(std::thread([] { memory::freePooled(memory::allocatePooled(88), 88); }).join(),
                 kMessage);
}

TEST_F(OwnerDeathTest, AStrangerMayNotGiveBackToThePool) {
    void* const place = memory::allocatePooled(88);
    EXPECT_DEATH(std::thread([place] { memory::freePooled(place, 88); }).join(), kMessage);
    memory::freePooled(place, 88);
}

TEST_F(OwnerDeathTest, WhoHasGivenTheModelAwayIsAStranger) {
    Handover handover;
    handover.give();
    EXPECT_DEATH(static_cast<void>(memory::allocatePooled(88)), kMessage);
    EXPECT_DEATH(handover.give(), kMessage);
    handover.take();
    memory::freePooled(memory::allocatePooled(88), 88);
}

#endif

} // namespace
} // namespace corvane::utils::thread
