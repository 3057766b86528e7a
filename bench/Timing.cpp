#include "bench/Timing.hpp"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <utility>
#include <vector>

namespace corvane::bench {

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

double medianSeconds(int runs, workbench::FunctionRef<void()> prepare,
                     workbench::FunctionRef<void()> body) {
    using Clock = std::chrono::steady_clock;
    std::vector<double> seconds;
    for (int run = 0; run != runs; ++run) {
        prepare();
        trimMemory();
        const auto start = Clock::now();
        body();
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
    }
    return median(std::move(seconds));
}

double medianSeconds(int runs, workbench::FunctionRef<void()> body) {
    return medianSeconds(runs, [] {}, body);
}

std::size_t residentBytes() {
    std::ifstream statm("/proc/self/statm");
    std::size_t total = 0;
    std::size_t resident = 0;
    statm >> total >> resident;
    return resident * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

void trimMemory() { ::malloc_trim(0); }

} // namespace corvane::bench
