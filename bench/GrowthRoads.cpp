#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <array>
#include <optional>
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

constexpr std::array<const char*, 5> kRoads{"source to document", "first import", "save", "load",
                                            "re-import"};
using Times = std::array<double, kRoads.size()>; // in seconds, in the order of kRoads

/// All roads at one size.
class Size {
public:
    Size(const Workshop& workshop, std::size_t items)
        : workshop_(&workshop),
          file_(workshop.write(std::to_string(items) + ".db",
                               mixedSource(items, items / kItemsOfBlock))),
          project_(workshop.path(std::to_string(items) + ".json")) {}

    [[nodiscard]] Times run() const {
        auto target = workshop_->newTarget();
        std::optional<core::Project> loaded;
        const auto document = [&] { return Workshop::documentOf(*target.element, file_); };
        const auto import = [&] {
            core::importDocument(target.project, *target.element, document());
        };
        const auto load = [&] { loaded.emplace(workshop_->plugins(), project_); };
        Times times{};
        times[0] = medianSeconds(1, [&] { keep(document()); });
        times[1] = medianSeconds(1, import);
        times[2] = medianSeconds(
            1, [&] { std::filesystem::remove(project_); },
            [&] { workshop_->save(target.project, project_); });
        times[3] = medianSeconds(1, load);
        loaded.reset();
        times[4] = medianSeconds(1, import);
        return times;
    }

private:
    const Workshop* workshop_;
    std::filesystem::path file_;
    std::filesystem::path project_;
};

} // namespace

void measureGrowth(const Workshop& workshop, std::vector<Result>& results) {
    std::vector<Size> sizes;
    for (const auto items : kItems)
        sizes.emplace_back(workshop, items);
    std::array<std::array<std::vector<double>, kRoads.size()>, kItems.size()> times;
    // The sizes in turn, so that all of them meet the machine in each of its moods.
    for (int run = 0; run != kRuns; ++run)
        for (std::size_t size = 0; size != kItems.size(); ++size) {
            const auto once = sizes[size].run();
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
