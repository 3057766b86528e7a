#include "workbench/cli/verbs/ImportReportPrinter.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string_view>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;
using core::ImportedElement;

constexpr std::size_t kChangeWidth = 9; // of the column that says what happened

struct ChangeName {
    std::string_view text;
    std::string_view kind; // in JSON
};

ChangeName nameOf(ImportedElement::Change change) {
    constexpr std::array<ChangeName, 6> kNames{{{"added", "added"},
                                                {"updated", "changed"},
                                                {"moved", "moved"},
                                                {"renamed", "renamed"},
                                                {"removed", "removed"},
                                                {"missing", "missing"}}};
    return kNames[static_cast<std::size_t>(change)];
}

std::string counted(std::size_t count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what);
}

/// With a comma in front; nothing where there are none.
std::string furtherCounted(std::size_t count, std::string_view what) {
    return count == 0 ? "" : ", " + counted(count, what);
}

/// What to do about it, to be put behind the text; as a rule nothing.
std::string_view adviceOn(const core::MergeWarning& warning) {
    return warning.kind == core::MergeWarning::Kind::misleadingNames
               ? "; --match name would go by the names"
               : "";
}

void addText(encoder::Object& object, encoder::Key key, const std::optional<std::string>& text) {
    if (text)
        object.addStringView(key, *text);
    else
        object.addNull(key);
}

void addNumber(encoder::Object& object, encoder::Key key, std::optional<std::uint64_t> number) {
    if (number)
        object.addNumber(key, *number);
    else
        object.addNull(key);
}

// What an element saved is JSON already.
void addJson(encoder::Object& object, encoder::Key key, const std::optional<std::string>& json) {
    object.addPreformattedNumber(key, json ? std::string_view(*json) : "null");
}

void writeChange(encoder::Array& changes, const ImportedElement& imported) {
    auto object = changes.addObject();
    object.addStringView("kind", nameOf(imported.change()).kind);
    object.addStringView("element", imported.path());
    addText(object, "from", imported.from());
    auto members = object.addArray("members");
    for (const auto& change : imported.members()) {
        auto member = members.addObject();
        member.addStringView("name", change.name);
        addJson(member, "old", change.before);
        addJson(member, "new", change.after);
    }
}

void writeCounts(encoder::Object& object, const core::ImportCounts& counts) {
    object.addNumber("added", counts.added);
    object.addNumber("changed", counts.changed);
    object.addNumber("moved", counts.moved);
    object.addNumber("renamed", counts.renamed);
    object.addNumber("removed", counts.removed);
    object.addNumber("unchanged", counts.unchanged);
    object.addNumber("missing", counts.missing);
}

void writeWarnings(encoder::Object& object, const MergedImport& import) {
    auto warnings = object.addArray("warnings");
    const auto add = [&](const std::string& message, const ui::ImportWarning& place,
                         const std::filesystem::path& file) {
        auto warning = warnings.addObject();
        warning.addStringView("message", message);
        warning.addStringView("file", file.string());
        addNumber(warning, "line", place.line);
        addNumber(warning, "column", place.column);
        addText(warning, "element",
                place.element.empty() ? std::nullopt : std::optional(place.element));
    };
    const auto& warningsOfFile = import.document.warnings;
    for (std::size_t index = 0; index != warningsOfFile.size(); ++index)
        add(narrow(warningsOfFile[index].text), warningsOfFile[index],
            import.warningFiles.empty() ? import.file : import.warningFiles[index]);
    for (const auto& warning : import.warnings())
        add(narrow(warning.text).append(adviceOn(warning)),
            {.text = {}, .element = warning.element}, import.file);
}

// The pieces stand at the end of the document, in its order, behind what it brings beside them.
void writeMemory(encoder::Object& object, const MergedImport& import) {
    auto memory = object.addArray("memory");
    const auto& top = import.outcome.top;
    const auto& pieces = import.document.memory;
    const auto first = top.size() - std::min(pieces.size(), top.size());
    for (std::size_t i = first; i != top.size(); ++i) {
        auto piece = memory.addObject();
        piece.addStringView("element", top[i]->path());
        piece.addNumber("bytes", pieces[i - first].bytes);
    }
}

} // namespace

void printFileWarnings(const std::filesystem::path& file, const ui::ImportedDocument& document,
                       std::span<const std::filesystem::path> files) {
    for (std::size_t index = 0; index != document.warnings.size(); ++index)
        printMessage("warning: " +
                     narrow(core::textOf(document.warnings[index],
                                         (files.empty() ? file : files[index]).string())));
}

void printMergeWarnings(const MergedImport& import) {
    for (const auto& warning : import.warnings())
        printMessage(("warning: " + narrow(core::textOf(warning))).append(adviceOn(warning)));
}

std::string changesDone(const core::ImportCounts& counts) {
    return counted(counts.added, counts.added == 1 ? "element added, " : "elements added, ") +
           counted(counts.changed, "updated") + furtherCounted(counts.moved, "moved") +
           furtherCounted(counts.renamed, "renamed") + furtherCounted(counts.removed, "removed");
}

std::string changesToCome(const core::ImportCounts& counts) {
    return counted(counts.added, "added, ") + counted(counts.changed, "updated") +
           furtherCounted(counts.moved, "moved") + ", " + counted(counts.renamed, "renamed") +
           furtherCounted(counts.removed, "removed") + ", " +
           counted(counts.unchanged, "unchanged") + furtherCounted(counts.missing, "missing");
}

void printChanges(TextOutput& output, const MergedImport& import, bool members) {
    const auto print = [&](const ImportedElement& imported) {
        output.write(padded(nameOf(imported.change()).text, kChangeWidth));
        output.write(imported.path());
        if (imported.change() == ImportedElement::Change::renamed) {
            output.write(", was ");
            output.write(imported.nameBefore());
        }
        output.endLine();
        if (!members)
            return;
        for (const auto& [name, before, after] : imported.members()) {
            output.fill(kChangeWidth + 2);
            output.write(name);
            output.writeLine(": " + before.value_or("none") + " -> " + after.value_or("none"));
        }
    };
    countImported(import.changes, import.options.match, import.newTarget, print);
}

void writeImport(TextOutput& output, const MergedImport& import) {
    output.writeDocument([&](utils::io::OutputStream& stream) {
        {
            encoder::Document document(stream, encoder::Format::lines);
            auto object = document.object();
            object.addStringView("target", import.target->path());
            object.addStringView("file", import.file.string());
            writeCounts(object, import.counts());
            {
                auto changes = object.addArray("changes");
                countImported(
                    import.changes, import.options.match, import.newTarget,
                    [&](const ImportedElement& imported) { writeChange(changes, imported); });
            }
            writeWarnings(object, import);
            writeMemory(object, import);
        }
        stream.put('\n');
    });
}

} // namespace corvane::workbench::cli
