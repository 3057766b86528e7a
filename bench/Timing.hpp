#pragma once

#include <corvane/workbench/FunctionRef.hpp>

#include <cstddef>

namespace corvane::bench {

/// The median of the seconds that `body` takes in `runs` runs; `prepare` comes before each of them
/// and is not timed.
[[nodiscard]] double medianSeconds(int runs, workbench::FunctionRef<void()> prepare,
                                   workbench::FunctionRef<void()> body);

[[nodiscard]] double medianSeconds(int runs, workbench::FunctionRef<void()> body);

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
