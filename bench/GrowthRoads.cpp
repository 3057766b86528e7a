#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/DocumentWriter.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <corvane/utils/io/FileOutputStream.hpp>

#include <array>
#include <optional>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr std::array<std::size_t, 3> kSizes{10'000, 100'000, 1'000'000};
constexpr int kRuns = 5;
constexpr double kBar = 11.5;

/// The seconds of each road at one size, in the order of kRoads.
constexpr std::array<const char*, 5> kRoads{"source to document", "first import", "re-import",
                                            "save", "load"};
using Times = std::array<double, kRoads.size()>;

Times measureAt(const Workshop& workshop, std::size_t items) {
    const auto file = workshop.write("growth.db", mixedSource(items, 20));
    const auto project = workshop.path("growth.json");
    std::optional<Workshop::Target> target;
    const auto renew = [&] {
        target.reset();
        target.emplace(workshop.newTarget());
    };
    const auto import = [&] {
        core::importDocument(target->project, *target->element,
                             Workshop::documentOf(*target->element, file));
    };
    Times times{};
    renew();
    times[0] = medianSeconds(kRuns, [&] { keep(Workshop::documentOf(*target->element, file)); });
    times[1] = medianSeconds(kRuns, renew, import);
    times[3] = medianSeconds(
        kRuns, [&] { std::filesystem::remove(project); },
        [&] {
            auto stream = utils::io::FileOutputStream::create(project);
            core::writeProject(stream, workshop.plugins(), target->project.model().root());
            stream.flush();
        });
    std::optional<core::Project> loaded;
    times[4] = medianSeconds(
        kRuns, [&] { loaded.reset(); }, [&] { loaded.emplace(workshop.plugins(), project); });
    loaded.reset();
    times[2] = medianSeconds(kRuns, import);
    return times;
}

} // namespace

void measureGrowth(const Workshop& workshop, std::vector<Result>& results) {
    std::array<Times, kSizes.size()> times{};
    for (std::size_t i = 0; i != kSizes.size(); ++i)
        times[i] = measureAt(workshop, kSizes[i]);
    for (std::size_t road = 0; road != kRoads.size(); ++road)
        for (std::size_t i = 1; i != kSizes.size(); ++i)
            results.push_back({std::string("growth: ") + kRoads[road],
                               std::to_string(kSizes[i - 1]) + " to " + std::to_string(kSizes[i]),
                               times[i][road],
                               "",
                               "the step before",
                               times[i][road] / times[i - 1][road],
                               kBar,
                               {}});
}

} // namespace corvane::bench
