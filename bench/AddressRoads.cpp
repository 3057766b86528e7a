#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"

#include "plugins/s7/address/S7Address.hpp"

#include <charconv>
#include <stdexcept>

namespace corvane::bench {

namespace {

namespace s7 = workbench::plugins::s7Driver;

constexpr int kRuns = 9;
constexpr std::size_t kCount = 1'000'000;

std::size_t parseAll(const std::vector<std::string>& addresses) {
    std::size_t sum = 0;
    for (const auto& address : addresses)
        try {
            sum += static_cast<std::size_t>(*s7::parseAddress(address).memoryArea);
        } catch (const std::runtime_error& error) {
            sum += error.what()[0] == 'i' ? 1U : 2U;
        }
    return sum;
}

// Nothing but the conversions: every run of digits becomes a number.
std::size_t convertAll(const std::vector<std::string>& addresses) {
    std::size_t sum = 0;
    for (const auto& address : addresses) {
        const char* at = address.data();
        const char* const end = at + address.size();
        while (at != end) {
            unsigned number = 0;
            const auto result = std::from_chars(at, end, number);
            if (result.ec == std::errc())
                sum += number;
            at = result.ptr == at ? at + 1 : result.ptr;
        }
    }
    return sum;
}

} // namespace

void measureAddresses(std::vector<Result>& results) {
    const auto good = goodAddresses(kCount);
    const auto bad = badAddresses(kCount);
    const auto [conversions, goodRuns, badRuns] = secondsInTurn(
        kRuns, [&] { keep(convertAll(good)); }, [&] { keep(parseAll(good)); },
        [&] { keep(parseAll(bad)); });
    const double goodSeconds = median(goodRuns);
    const double badSeconds = median(badRuns);
    const auto rate = [](double seconds) { return ratePerSecond(kCount, seconds, "texts"); };
    results.push_back({"addresses, good",
                       "1,000,000",
                       goodSeconds,
                       rate(goodSeconds),
                       "std::from_chars alone",
                       medianRatio(goodRuns, conversions),
                       4,
                       {}});
    results.push_back({"addresses, bad",
                       "1,000,000",
                       badSeconds,
                       rate(badSeconds),
                       "good addresses",
                       medianRatio(badRuns, goodRuns),
                       40,
                       {}});
}

} // namespace corvane::bench
