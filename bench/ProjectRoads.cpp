#include "bench/DocumentReferences.hpp"
#include "bench/FreshProcess.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/ElementWalk.hpp"
#include "workbench/core/ProjectImport.hpp"
#include "workbench/core/TextFile.hpp"

#include <cstdio>
#include <optional>
#include <string>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr int kRuns = 5;
constexpr std::size_t kItems = 1'000'000;
constexpr std::size_t kBlocks = 100;

/// The first data block's spin box, through which its number changes.
workbench::ui::Control& numberOf(const core::OpenForm& form) { return *form.controls().front(); }

void measureNumberChange(const Workshop& workshop, double secondsPerLoadedItem,
                         std::vector<Result>& results) {
    constexpr std::size_t items = 65'000;
    auto target = workshop.newTarget();
    const auto file = workshop.write("block.db", scalarSource(items, 1));
    core::importDocument(target.project, *target.element,
                         Workshop::documentOf(*target.element, file));
    auto& block = *target.element->childElements().back();
    const core::OpenForm form(block);
    std::uint64_t number = 100;
    const double seconds =
        medianSeconds(9, [&] { keep(numberOf(form).setValue(++number).has_value()); });
    results.push_back({"change of a DB number",
                       "65,000 items",
                       seconds,
                       ratePerSecond(items, seconds, "items"),
                       "loading an item",
                       seconds / items / secondsPerLoadedItem,
                       0.5,
                       {}});
}

/// Leaves the project's text in `file`.
void measureSave(const Workshop& workshop, const core::Project& project,
                 const std::filesystem::path& file, std::vector<Result>& results) {
    const auto write = [&] { workshop.save(project, file); };
    const auto text = (write(), core::readTextFile(file));
    const WritingScript script(text);
    const auto [removed, save, writer] = medianSecondsInTurn(
        kRuns, [&] { std::filesystem::remove(file); }, write, [&] { keep(script.run()); });
    results.push_back({"project save, without the flush to disk",
                       megabytes(text.size()),
                       save,
                       ratePerSecond(kItems, save, "items"),
                       "RapidJSON Writer",
                       save / writer,
                       1,
                       {}});
}

/// Returns the seconds per item. To be called while there is no other project: its elements would
/// keep memory at hand that a program that has just started must ask the system for.
double measureLoad(const Workshop& workshop, const std::filesystem::path& file,
                   std::vector<Result>& results) {
    const auto text = core::readTextFile(file);
    std::optional<core::Project> loaded;
    const auto [dropped, load, fields] = medianSecondsInTurn(
        kRuns, [&] { loaded.reset(); }, [&] { loaded.emplace(workshop.plugins(), file); },
        [&] { keep(readAllFields(text)); });
    results.push_back({"project load",
                       megabytes(text.size()),
                       load,
                       ratePerSecond(kItems, load, "items"),
                       "simdjson, all fields",
                       load / fields,
                       8,
                       {}});
    const auto elements = core::countElements(loaded->model().root().childElements());
    const auto bytes =
        std::stod(askFreshProcess(kResidentVerb, file)) / static_cast<double>(elements);
    results.push_back({"memory of a loaded project", "1,000,000 items", 0, "", "bytes per item",
                       bytes, 600, bytes});
    return load / kItems;
}

/// What the roads of a whole project work on.
struct Plant {
    explicit Plant(const Workshop& builtWith)
        : workshop(&builtWith), file(builtWith.write("plant.db", scalarSource(kItems, kBlocks))) {
        renew();
    }

    void renew() {
        target.reset();
        target.emplace(workshop->newTarget());
    }
    [[nodiscard]] std::string document() const {
        return Workshop::documentOf(*target->element, file);
    }
    void import(std::string document) {
        core::importDocument(target->project, *target->element, std::move(document));
    }

    const Workshop* workshop;
    std::filesystem::path file;
    std::optional<Workshop::Target> target;
};

void measureImport(Plant& plant, std::vector<Result>& results) {
    const auto text = plant.document();
    std::string document;
    const auto prepare = [&] {
        plant.renew();
        document = plant.document();
    };
    const auto [prepared, import, fields, copy] = medianSecondsInTurn(
        kRuns, prepare, [&] { plant.import(std::move(document)); },
        [&] { keep(readAllFields(text)); }, [&] { copyFresh(text); });
    const auto size = megabytes(text.size());
    const auto rate = ratePerSecond(kItems, import, "items");
    results.push_back({"document to project",
                       size,
                       import,
                       rate,
                       "simdjson, all fields",
                       import / fields,
                       8,
                       {}});
    results.push_back({"document to project",
                       size,
                       import,
                       rate,
                       "memcpy of the document",
                       import / copy,
                       0,
                       {}});
}

void measureReimport(Plant& plant, std::vector<Result>& results) {
    const auto endToEnd = [&] { plant.import(plant.document()); };
    const auto [renewed, first, again] =
        medianSecondsInTurn(kRuns, [&] { plant.renew(); }, endToEnd, endToEnd);
    results.push_back({"re-import, end to end",
                       "1,000,000 items",
                       again,
                       ratePerSecond(kItems, again, "items"),
                       "the first import, end to end",
                       again / first,
                       2,
                       {}});
}

} // namespace

int printResidentBytes(const char* projectFile) {
    const Workshop workshop;
    trimMemory();
    const auto before = residentBytes();
    const core::Project project(workshop.plugins(), projectFile);
    trimMemory();
    std::printf("%zu\n", residentBytes() - before);
    return 0;
}

void measureProjects(const Workshop& workshop, std::vector<Result>& results) {
    const auto file = workshop.path("project.json");
    Plant plant(workshop);
    measureImport(plant, results);
    measureSave(workshop, plant.target->project, file, results);
    // Before the re-imports, which leave the heap in small pieces.
    plant.target.reset();
    const double perItem = measureLoad(workshop, file, results);
    measureReimport(plant, results);
    plant.target.reset();
    measureNumberChange(workshop, perItem, results);
}

} // namespace corvane::bench
