#include "bench/FreshProcess.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <iterator>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr std::array<std::size_t, 3> kItems{10'000, 100'000, 1'000'000};
constexpr int kRuns = 7;
constexpr double kBar = 11.5;

// No address of a larger block would be valid, and errors cost what the smaller sizes have not.
constexpr std::size_t kItemsOfBlock = 2'500;

constexpr std::array<const char*, 5> kRoads{"source to document", "first import", "save",
                                            "re-import", "load"};
using Times = std::vector<double>; // in seconds, in the order of kRoads

std::filesystem::path projectOf(std::filesystem::path source) {
    return source.replace_extension(".json");
}

/// Asks a process that has just started, as most do that import or load. This one would find
/// memory at hand that it has used before, for some sizes more than for others.
void askTimes(const char* verb, const std::filesystem::path& file, Times& times) {
    std::istringstream line(askFreshProcess(verb, file));
    std::copy(std::istream_iterator<double>(line), {}, std::back_inserter(times));
}

Times timesOf(const std::filesystem::path& source) {
    const auto project = projectOf(source);
    std::filesystem::remove(project);
    Times times;
    askTimes(kImportTimesVerb, source, times);
    askTimes(kLoadTimeVerb, project, times);
    if (times.size() != kRoads.size())
        throw std::runtime_error("no times of " + source.string());
    return times;
}

} // namespace

int printImportTimes(const char* source) {
    const Workshop workshop;
    auto target = workshop.newTarget();
    const auto document = [&] { return Workshop::documentOf(*target.element, source); };
    const auto import = [&] { core::importDocument(target.project, *target.element, document()); };
    const auto save = [&] { workshop.save(target.project, projectOf(source)); };
    const auto [written, imported, saved, again] =
        medianSecondsInTurn(1, [&] { keep(document()); }, import, save, import);
    std::printf("%.9f %.9f %.9f %.9f\n", written, imported, saved, again);
    return 0;
}

int printLoadTime(const char* project) {
    const Workshop workshop;
    std::optional<core::Project> loaded;
    std::printf("%.9f\n", medianSeconds(1, [&] { loaded.emplace(workshop.plugins(), project); }));
    return 0;
}

void measureGrowth(const Workshop& workshop, std::vector<Result>& results) {
    std::vector<std::filesystem::path> sources;
    for (const auto items : kItems)
        sources.push_back(workshop.write(std::to_string(items) + ".db",
                                         mixedSource(items, items / kItemsOfBlock)));
    std::array<std::array<std::vector<double>, kRoads.size()>, kItems.size()> times;
    // The sizes in turn, so that all of them meet the machine in each of its moods.
    for (int run = 0; run != kRuns; ++run)
        for (std::size_t size = 0; size != kItems.size(); ++size) {
            const auto once = timesOf(sources[size]);
            for (std::size_t road = 0; road != kRoads.size(); ++road)
                times[size][road].push_back(once[road]);
        }
    for (std::size_t road = 0; road != kRoads.size(); ++road)
        for (std::size_t size = 1; size != kItems.size(); ++size) {
            const double seconds = median(times[size][road]);
            results.push_back(
                {std::string("growth: ") + kRoads[road],
                 std::to_string(kItems[size - 1]) + " to " + std::to_string(kItems[size]),
                 seconds,
                 "",
                 "the step before",
                 seconds / median(times[size - 1][road]),
                 kBar,
                 {}});
        }
}

} // namespace corvane::bench
