#include "bench/DocumentReferences.hpp"
#include "bench/FreshProcess.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/files/TextFile.hpp"
#include "workbench/core/import/ProjectImport.hpp"

#include <valgrind/callgrind.h>

#include <array>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr std::array<std::size_t, 3> kItems{2'500, 25'000, 250'000};
constexpr double kGrowthBar = 10.5;

// No address of a larger block would be valid, and errors cost what the smaller sizes have not.
constexpr std::size_t kItemsOfBlock = 2'500;

enum Road : std::size_t { document, firstImport, save, reimport, load, writer };
constexpr std::size_t kImportRoads = 4; // the first ones, which one process goes
constexpr std::size_t kLoadRoads = 2;   // the others
constexpr std::array<const char*, 5> kGrowing{"source to document", "first import", "save",
                                              "re-import", "load"};

std::filesystem::path projectOf(std::filesystem::path source) {
    return source.replace_extension(".json");
}

/// Goes a road so that its instructions are counted, if this process runs under callgrind.
void countInstructions(workbench::function_ref<void()> road) {
    CALLGRIND_START_INSTRUMENTATION;
    road();
    CALLGRIND_DUMP_STATS;
    CALLGRIND_STOP_INSTRUMENTATION;
}

/// The instructions of each Road with a source of that many items.
std::vector<double> countRoads(const Setup& setup, std::size_t items) {
    const auto source =
        setup.write(std::to_string(items) + ".db", mixedSource(items, items / kItemsOfBlock));
    auto counts = countInFreshProcess(kImportRoadsVerb, source, kImportRoads);
    for (const double count : countInFreshProcess(kLoadRoadsVerb, projectOf(source), kLoadRoads))
        counts.push_back(count);
    return counts;
}

} // namespace

int goImportRoads(const char* source) {
    const Setup setup;
    auto target = setup.newTarget();
    const auto document = [&] { return Setup::documentOf(*target.element, source); };
    const auto import = [&] { core::importDocument(target.project, *target.element, document()); };
    countInstructions([&] { keep(document()); });
    countInstructions(import);
    countInstructions([&] { setup.save(target.project, projectOf(source)); });
    countInstructions(import);
    return 0;
}

int goLoadRoads(const char* project) {
    const Setup setup;
    std::optional<core::Project> loaded;
    countInstructions([&] { loaded.emplace(setup.plugins(), project); });
    const WritingScript script(core::readTextFile(project));
    countInstructions([&] { keep(script.run()); });
    return 0;
}

void measureGrowth(const Setup& setup, std::vector<Result>& results) {
    std::vector<std::vector<double>> counts;
    counts.reserve(kItems.size());
    for (const auto items : kItems)
        counts.push_back(countRoads(setup, items));
    const auto compare = [&](std::string name, std::size_t size, std::size_t road, double reference,
                             const char* referenceName, double bar) {
        const double count = counts[size][road];
        results.push_back({std::move(name),
                           std::to_string(kItems[size]) + " items",
                           0,
                           instructionsPerItem(count, kItems[size]),
                           referenceName,
                           count / reference,
                           bar,
                           {}});
    };
    constexpr std::size_t last = kItems.size() - 1;
    compare("instructions: save", last, save, counts[last][writer], "RapidJSON Writer", 1);
    compare("instructions: re-import", last, reimport, counts[last][firstImport],
            "the first import", 2);
    for (std::size_t road = 0; road != kGrowing.size(); ++road)
        for (std::size_t size = 1; size <= last; ++size)
            compare(std::string("growth: ") + kGrowing[road], size, road, counts[size - 1][road],
                    "a tenth of the items", kGrowthBar);
}

} // namespace corvane::bench
