#include "bench/DocumentReferences.hpp"
#include "bench/FreshProcess.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/files/TextFile.hpp"
#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <cstdio>
#include <optional>
#include <string>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr int kRuns = 9;
constexpr std::size_t kItems = 1'000'000;
constexpr std::size_t kBlocks = 100;

/// The first data block's spin box, through which its number changes.
workbench::ui::Control& numberOf(const core::OpenForm& form) { return *form.controls().front(); }

void measureNumberChange(const Setup& setup, double secondsPerLoadedItem,
                         std::vector<Result>& results) {
    constexpr std::size_t items = 65'000;
    auto target = setup.newTarget();
    const auto file = setup.write("block.db", scalarSource(items, 1));
    core::importDocument(target.project, *target.element, Setup::documentOf(*target.element, file));
    auto& block = *target.element->childElements().back();
    const core::OpenForm form(block);
    std::uint64_t number = 100;
    const auto [changes] =
        secondsInTurn(kRuns, [&] { keep(numberOf(form).setValue(++number).has_value()); });
    const double seconds = median(changes);
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
void measureSave(const Setup& setup, const core::Project& project,
                 const std::filesystem::path& file, std::vector<Result>& results) {
    const auto write = [&] { setup.save(project, file); };
    const auto text = (write(), core::readTextFile(file));
    const WritingScript script(text);
    const auto [removed, saves, writer] = secondsInTurn(
        kRuns, [&] { std::filesystem::remove(file); }, write, [&] { keep(script.run()); });
    const double save = median(saves);
    results.push_back({"project save, without the flush to disk",
                       megabytes(text.size()),
                       save,
                       ratePerSecond(kItems, save, "items"),
                       "RapidJSON Writer",
                       medianRatio(saves, writer),
                       0, // its instructions have one
                       {}});
}

/// Returns the seconds per item. To be called while there is no other project: its elements would
/// keep memory at hand that a program that has just started must ask the system for.
double measureLoad(const Setup& setup, const std::filesystem::path& file,
                   std::vector<Result>& results) {
    const auto text = core::readTextFile(file);
    std::optional<core::Project> loaded;
    const auto [dropped, loads, fields] = secondsInTurn(
        kRuns, [&] { loaded.reset(); }, [&] { loaded.emplace(setup.plugins(), file); },
        [&] { keep(readAllFields(text)); });
    const double load = median(loads);
    results.push_back({"project load",
                       megabytes(text.size()),
                       load,
                       ratePerSecond(kItems, load, "items"),
                       "simdjson, all fields",
                       medianRatio(loads, fields),
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
    explicit Plant(const Setup& builtWith)
        : setup(&builtWith), file(builtWith.write("plant.db", scalarSource(kItems, kBlocks))) {
        renew();
    }

    void renew() {
        target.reset();
        target.emplace(setup->newTarget());
    }
    [[nodiscard]] std::string document() const { return Setup::documentOf(*target->element, file); }
    void import(std::string document) {
        core::importDocument(target->project, *target->element, std::move(document));
    }

    const Setup* setup;
    std::filesystem::path file;
    std::optional<Setup::Target> target;
};

void measureImport(Plant& plant, std::vector<Result>& results) {
    const auto text = plant.document();
    std::string document;
    const auto prepare = [&] {
        plant.renew();
        document = plant.document();
    };
    const auto [prepared, imports, fields, copy] = secondsInTurn(
        kRuns, prepare, [&] { plant.import(std::move(document)); },
        [&] { keep(readAllFields(text)); }, [&] { copyFresh(text); });
    const double import = median(imports);
    const auto size = megabytes(text.size());
    const auto rate = ratePerSecond(kItems, import, "items");
    results.push_back({"document to project",
                       size,
                       import,
                       rate,
                       "simdjson, all fields",
                       medianRatio(imports, fields),
                       8,
                       {}});
    results.push_back({"document to project",
                       size,
                       import,
                       rate,
                       "memcpy of the document",
                       medianRatio(imports, copy),
                       0,
                       {}});
}

void measureReimport(Plant& plant, std::vector<Result>& results) {
    const auto endToEnd = [&] { plant.import(plant.document()); };
    const auto [renewed, first, again] =
        secondsInTurn(kRuns, [&] { plant.renew(); }, endToEnd, endToEnd);
    const double seconds = median(again);
    results.push_back({"re-import, end to end",
                       "1,000,000 items",
                       seconds,
                       ratePerSecond(kItems, seconds, "items"),
                       "the first import, end to end",
                       medianRatio(again, first),
                       0, // its instructions have one
                       {}});
}

} // namespace

int printResidentBytes(const char* projectFile) {
    const Setup setup;
    trimMemory();
    const auto before = residentBytes();
    const core::Project project(setup.plugins(), projectFile);
    trimMemory();
    std::printf("%zu\n", residentBytes() - before);
    return 0;
}

void measureProjects(const Setup& setup, std::vector<Result>& results) {
    const auto file = setup.path("project.json");
    Plant plant(setup);
    measureImport(plant, results);
    measureSave(setup, plant.target->project, file, results);
    // Before the re-imports, which leave the heap in small pieces.
    plant.target.reset();
    const double perItem = measureLoad(setup, file, results);
    measureReimport(plant, results);
    plant.target.reset();
    measureNumberChange(setup, perItem, results);
}

} // namespace corvane::bench
