#include "bench/DocumentReferences.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"

namespace corvane::bench {

namespace {

constexpr int kRuns = 15;

struct Road {
    std::string name;
    std::string source;
    std::size_t items;
    double writerBar;
    double scanBar; // 0 where the source says little of the work
};

void measure(const Workshop& workshop, const Road& road, std::vector<Result>& results) {
    const auto file = workshop.write("road.db", road.source);
    const auto target = workshop.newTarget();
    const auto document = Workshop::documentOf(*target.element, file);
    const WritingScript script(document);

    const auto [seconds, writer, scan, copy] = medianSecondsInTurn(
        kRuns, [&] { keep(Workshop::documentOf(*target.element, file)); },
        [&] { keep(script.run()); }, [&] { keep(countLines(road.source)); },
        [&] { copyFresh(document); });

    const auto size = megabytes(road.source.size()) + " to " + megabytes(document.size());
    const auto rate = ratePerSecond(static_cast<double>(road.items), seconds, "items");
    results.push_back(
        {road.name, size, seconds, rate, "RapidJSON Writer", seconds / writer, road.writerBar, {}});
    results.push_back(
        {road.name, size, seconds, rate, "memcpy of the document", seconds / copy, 0, {}});
    if (road.scanBar != 0)
        results.push_back({road.name,
                           size,
                           seconds,
                           rate,
                           "memchr for newlines",
                           seconds / scan,
                           road.scanBar,
                           {}});
}

} // namespace

void measureImportDocuments(const Workshop& workshop, std::vector<Result>& results) {
    measure(workshop, {"source to document, scalars", scalarSource(200'000, 20), 200'000, 0.6, 20},
            results);
    measure(workshop, {"source to document, mixed", mixedSource(200'000, 20), 200'000, 0, 0},
            results);
    measure(workshop, {"source to document, arrays", arraySource(1'000'000), 1'000'000, 0.35, 0},
            results);
}

} // namespace corvane::bench
