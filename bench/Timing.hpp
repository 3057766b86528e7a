#pragma once

#include <corvane/workbench/FunctionRef.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace corvane::bench {

/// The middle one of some values; of an even number, the upper of the two.
[[nodiscard]] double median(std::vector<double> values);

/// The median of the seconds that `body` takes in `runs` runs; `prepare` comes before each of them
/// and is not timed. Each run begins with a trimmed heap, as a fresh process would: else the small
/// sizes would find memory that is ready for them, and the large ones would not.
[[nodiscard]] double medianSeconds(int runs, workbench::FunctionRef<void()> prepare,
                                   workbench::FunctionRef<void()> body);

[[nodiscard]] double medianSeconds(int runs, workbench::FunctionRef<void()> body);

/// The medians of the seconds that each of several bodies takes. They run in turn, so that a
/// machine that is slower for a while is so for all of them.
template <class... Bodies>
[[nodiscard]] std::array<double, sizeof...(Bodies)> medianSecondsInTurn(int runs,
                                                                        const Bodies&... bodies) {
    std::array<std::vector<double>, sizeof...(Bodies)> seconds;
    for (int run = 0; run != runs; ++run) {
        std::size_t body = 0;
        (seconds[body++].push_back(medianSeconds(1, bodies)), ...);
    }
    std::array<double, sizeof...(Bodies)> medians;
    std::ranges::transform(seconds, medians.begin(), median);
    return medians;
}

/// The bytes of this process that are in memory now.
[[nodiscard]] std::size_t residentBytes();

/// Gives what the allocator holds unused back to the system, so that resident sizes compare.
void trimMemory();

/// Keeps the compiler from dropping a computation whose result nobody uses.
template <class T>
void keep(const T& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace corvane::bench
