#include "bench/DocumentReferences.hpp"
#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"
#include "workbench/core/DocumentWriter.hpp"
#include "workbench/core/ElementWalk.hpp"
#include "workbench/core/ProjectImport.hpp"
#include "workbench/core/TextFile.hpp"

#include <corvane/utils/io/FileOutputStream.hpp>

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <stdexcept>

namespace corvane::bench {

namespace core = workbench::core;

namespace {

constexpr int kRuns = 3;
constexpr std::size_t kItems = 1'000'000;
constexpr std::size_t kBlocks = 100;

std::size_t countElements(const core::Project& project) {
    std::size_t count = 0;
    core::forEachElement(project.model().root().childElements(), [&](auto&) { ++count; });
    return count;
}

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

std::string outputOf(const std::string& command) {
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::array<char, 64> line{};
    if (pipe == nullptr || std::fgets(line.data(), line.size(), pipe.get()) == nullptr)
        throw std::runtime_error("no answer from " + command);
    return line.data();
}

/// Asked of a fresh process, since this one keeps memory of what it did before.
std::size_t residentBytesOfProject(const std::filesystem::path& file) {
    const auto output = outputOf("\"" + std::filesystem::read_symlink("/proc/self/exe").string() +
                                 "\" " + kResidentVerb + " \"" + file.string() + "\"");
    return static_cast<std::size_t>(std::stoull(output));
}

double measureSaveAndLoad(const Workshop& workshop, const core::Project& project,
                          std::vector<Result>& results) {
    const auto file = workshop.path("project.json");
    const auto write = [&] {
        auto stream = utils::io::FileOutputStream::create(file);
        core::writeProject(stream, workshop.plugins(), project.model().root());
        stream.flush();
    };
    const double save = medianSeconds(kRuns, [&] { std::filesystem::remove(file); }, write);
    const auto text = core::readTextFile(file);
    const WritingScript script(text);
    const double writer = medianSeconds(kRuns, [&] { keep(script.run()); });
    results.push_back({"project save, without the flush to disk",
                       megabytes(text.size()),
                       save,
                       ratePerSecond(kItems, save, "items"),
                       "RapidJSON Writer",
                       save / writer,
                       1,
                       {}});

    const double fields = medianSeconds(kRuns, [&] { keep(readAllFields(text)); });
    std::optional<core::Project> loaded;
    const double load = medianSeconds(
        kRuns, [&] { loaded.reset(); }, [&] { loaded.emplace(workshop.plugins(), file); });
    results.push_back({"project load",
                       megabytes(text.size()),
                       load,
                       ratePerSecond(kItems, load, "items"),
                       "simdjson, all fields",
                       load / fields,
                       8,
                       {}});

    loaded.reset();
    const auto bytes = static_cast<double>(residentBytesOfProject(file)) /
                       static_cast<double>(countElements(project));
    results.push_back({"memory of a loaded project", "1,000,000 items", 0, "", "bytes per item",
                       bytes, 600, bytes});
    return load / kItems;
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
    const auto file = workshop.write("plant.db", scalarSource(kItems, kBlocks));
    std::optional<Workshop::Target> target;
    std::string document;
    const auto prepare = [&] {
        target.reset();
        target.emplace(workshop.newTarget());
        document = Workshop::documentOf(*target->element, file);
    };
    const auto documentText = Workshop::documentOf(*workshop.newTarget().element, file);
    const double fields = medianSeconds(kRuns, [&] { keep(readAllFields(documentText)); });
    const double copy = medianSeconds(kRuns, [&] { copyFresh(documentText); });
    const double import = medianSeconds(kRuns, prepare, [&] {
        core::importDocument(target->project, *target->element, std::move(document));
    });
    const auto size = megabytes(documentText.size());
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

    const auto endToEnd = [&] {
        core::importDocument(target->project, *target->element,
                             Workshop::documentOf(*target->element, file));
    };
    const double first = medianSeconds(
        kRuns,
        [&] {
            target.reset();
            target.emplace(workshop.newTarget());
        },
        endToEnd);
    const double again = medianSeconds(kRuns, endToEnd);
    results.push_back({"re-import, end to end",
                       size,
                       again,
                       ratePerSecond(kItems, again, "items"),
                       "the first import, end to end",
                       again / first,
                       2,
                       {}});

    const double perItem = measureSaveAndLoad(workshop, target->project, results);
    target.reset();
    measureNumberChange(workshop, perItem, results);
}

} // namespace corvane::bench
