#include "bench/Report.hpp"

#include <array>
#include <cstdio>

namespace corvane::bench {

namespace {

template <class... Arguments>
std::string format(const char* pattern, Arguments... arguments) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), pattern, arguments...);
    return text.data();
}

std::string duration(double seconds) {
    if (seconds == 0)
        return "";
    return seconds < 0.01 ? format("%.3f ms", seconds * 1e3) : format("%.0f ms", seconds * 1e3);
}

} // namespace

int printReport(const std::vector<Result>& results) {
    int exceeded = 0;
    std::puts("| road | size | time | rate | ratio | bar | reference | bytes per item |");
    std::puts("|---|---|---|---|---|---|---|---|");
    for (const auto& result : results) {
        const bool bad = result.bar != 0 && result.ratio > result.bar;
        exceeded += bad ? 1 : 0;
        std::printf(
            "| %s | %s | %s | %s | %s | %s | %s | %s |\n", result.road.c_str(), result.size.c_str(),
            duration(result.seconds).c_str(), result.rate.c_str(),
            result.ratio == 0 ? "" : format(bad ? "**%.2f**" : "%.2f", result.ratio).c_str(),
            result.bar == 0 ? "" : format("%.4g", result.bar).c_str(), result.reference.c_str(),
            result.bytesPerItem ? format("%.0f", *result.bytesPerItem).c_str() : "");
        std::fflush(stdout);
    }
    return exceeded;
}

std::string ratePerSecond(double amount, double seconds, const std::string& unit) {
    return format("%.2f M ", amount / seconds / 1e6) + unit + "/s";
}

std::string instructionsPerItem(double instructions, std::size_t items) {
    return format("%.0f instructions/item", instructions / static_cast<double>(items));
}

std::string megabytes(std::size_t bytes) {
    return format("%.1f MB", static_cast<double>(bytes) / 1e6);
}

} // namespace corvane::bench
