#pragma once

#include <corvane/workbench/function_ref.hpp>

#include <array>
#include <cstddef>
#include <vector>

namespace corvane::bench {

/// What a road took in each of its runs, in seconds of processor time: what other processes do
/// meanwhile does not count, beyond the caches that they spoil.
using Seconds = std::vector<double>;

/// The middle one of some values, of which there must be one; of an even number, the upper of the
/// two.
[[nodiscard]] double median(std::vector<double> values);

/// How many times as long the road took as its reference, which ran right after or before it as
/// often: the median of the ratios of each pair. A machine that is slow for a while is slow for
/// both halves of a pair, and a pair that was disturbed between its halves is one of many.
[[nodiscard]] double medianRatio(const Seconds& road, const Seconds& reference);

/// The seconds that one run of `body` takes. It begins with a trimmed heap, as a fresh process
/// would: else the small sizes would find memory that is ready for them, and the large ones would
/// not.
[[nodiscard]] double secondsOf(workbench::function_ref<void()> body);

/// The lesser of what two runs take, one right after the other. The first may have to wait for
/// memory that a virtual machine has given back to its host, which is none of the body's doing.
[[nodiscard]] double warmSecondsOf(workbench::function_ref<void()> body);

/// The seconds that several bodies take, which run in turn: the values at one place of the results
/// are of one round. `measure` is one of the functions above.
template <auto measure = secondsOf, class... Bodies>
[[nodiscard]] std::array<Seconds, sizeof...(Bodies)> secondsInTurn(int runs,
                                                                   const Bodies&... bodies) {
    std::array<Seconds, sizeof...(Bodies)> seconds;
    for (int run = 0; run != runs; ++run) {
        std::size_t body = 0;
        (seconds[body++].push_back(measure(bodies)), ...);
    }
    return seconds;
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
