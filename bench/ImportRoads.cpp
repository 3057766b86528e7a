#include "bench/DocumentReferences.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"

namespace corvane::bench {

namespace {

constexpr int kRuns = 41;

struct Road {
    std::string name;
    std::string source;
    std::size_t items;
    double writerBar;
    double scanBar; // 0 where the source says little of the work
};

void measure(const Setup& setup, const Road& road, std::vector<Result>& results) {
    const auto file = setup.write("road.db", road.source);
    const auto target = setup.newTarget();
    const auto document = Setup::documentOf(*target.element, file);
    const WritingScript script(document);

    const auto [runs, writer, scan, copy] = secondsInTurn<warmSecondsOf>(
        kRuns, [&] { keep(Setup::documentOf(*target.element, file)); }, [&] { keep(script.run()); },
        [&] { keep(countLines(road.source)); }, [&] { copyFresh(document); });

    const double seconds = median(runs);
    const auto compare = [&, &runs = runs](const char* name, const Seconds& reference, double bar) {
        results.push_back({road.name,
                           megabytes(road.source.size()) + " to " + megabytes(document.size()),
                           seconds,
                           ratePerSecond(static_cast<double>(road.items), seconds, "items"),
                           name,
                           medianRatio(runs, reference),
                           bar,
                           {}});
    };
    compare("RapidJSON Writer", writer, road.writerBar);
    compare("memcpy of the document", copy, 0);
    if (road.scanBar != 0)
        compare("memchr for newlines", scan, road.scanBar);
}

} // namespace

void measureImportDocuments(const Setup& setup, std::vector<Result>& results) {
    measure(setup, {"source to document, scalars", scalarSource(200'000, 20), 200'000, 0.6, 20},
            results);
    measure(setup, {"source to document, mixed", mixedSource(200'000, 20), 200'000, 0, 0}, results);
    measure(setup, {"source to document, arrays", arraySource(1'000'000), 1'000'000, 0.35, 0},
            results);
}

} // namespace corvane::bench
