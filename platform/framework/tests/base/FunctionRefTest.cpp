#include <corvane/workbench/function_ref.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

namespace corvane::workbench {
namespace {

int callWith(function_ref<int(int)> function, int argument) { return function(argument); }

struct Doubler {
    int calls = 0;
    int operator()(int value) {
        ++calls;
        return 2 * value;
    }
};

struct Constant {
    int operator()(int) const { return 42; }
};

int negated(int value) { return -value; }

TEST(FunctionRef, CallsLambdasFunctorsAndFunctions) {
    const int offset = 5;
    EXPECT_EQ(callWith([&](int value) { return value + offset; }, 3), 8);
    EXPECT_EQ(callWith(Constant(), 3), 42);
    const Constant constant;
    EXPECT_EQ(callWith(constant, 3), 42);
    EXPECT_EQ(callWith(&negated, 3), -3);
}

TEST(FunctionRef, RefersToTheCallableItself) {
    Doubler doubler;
    EXPECT_EQ(callWith(doubler, 3), 6);
    EXPECT_EQ(callWith(doubler, 4), 8);
    EXPECT_EQ(doubler.calls, 2);
}

TEST(FunctionRef, ACopyRefersToTheSameCallable) {
    int sum = 0;
    const auto add = [&](int value) { return sum += value; };
    const function_ref<int(int)> first(add);
    const function_ref<int(int)> second(
        first); // NOLINT(performance-unnecessary-copy-initialization)
    first(1);
    second(2);
    EXPECT_EQ(sum, 3);
}

TEST(FunctionRef, DropsAResultThatNobodyAskedFor) {
    int last = 0;
    const auto store = [&](int value) { return last = value; };
    const function_ref<void(int)> function(store);
    function(9);
    EXPECT_EQ(last, 9);
}

TEST(FunctionRef, ConvertsTheResult) {
    const auto text = [](const char* letters) { return letters; };
    const function_ref<std::string(const char*)> function(text);
    EXPECT_EQ(function("abc"), "abc");
}

TEST(FunctionRef, HandsArgumentsOnAsTheyAre) {
    std::unique_ptr<int> kept;
    const auto keep = [&](std::unique_ptr<int> value, int& counter) {
        kept = std::move(value);
        ++counter;
    };
    const function_ref<void(std::unique_ptr<int>, int&)> function(keep);
    int counter = 0;
    function(std::make_unique<int>(3), counter);
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(*kept, 3);
    EXPECT_EQ(counter, 1);
}

static_assert(sizeof(function_ref<void()>) == 2 * sizeof(void*));
static_assert(!std::is_constructible_v<function_ref<int(int)>, std::string>);
static_assert(!std::is_constructible_v<function_ref<std::string()>, int (*)()>);

} // namespace
} // namespace corvane::workbench
