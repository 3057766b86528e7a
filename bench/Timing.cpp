#include "bench/Timing.hpp"

#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <functional>
#include <utility>

namespace corvane::bench {

namespace {

/// The processor time that this process has used, system calls included.
double processorSeconds() {
    timespec now{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

} // namespace

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

double medianRatio(const Seconds& road, const Seconds& reference) {
    std::vector<double> ratios(road.size());
    std::ranges::transform(road, reference, ratios.begin(), std::divides());
    return median(std::move(ratios));
}

double secondsOf(workbench::function_ref<void()> body) {
    trimMemory();
    const double start = processorSeconds();
    body();
    return processorSeconds() - start;
}

double warmSecondsOf(workbench::function_ref<void()> body) {
    const double first = secondsOf(body);
    return std::min(first, secondsOf(body));
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
