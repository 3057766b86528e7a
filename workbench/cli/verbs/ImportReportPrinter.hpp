#pragma once

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/import/ImportReport.hpp"
#include "workbench/core/import/ImportWarnings.hpp"

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <filesystem>
#include <span>
#include <string>
#include <vector>

/// What an import did, or would do, for people and for programs.
namespace corvane::workbench::cli {

/// An import that was merged into a project.
struct MergedImport {
    std::filesystem::path file;
    const model::Element* target;
    const model::Element* newTarget = nullptr; // the target, where it was added for the import
    core::ImportOptions options = {};
    ui::ImportedDocument document = {};
    /// Of each of the document's warnings the file that it is about; empty where all are about
    /// `file`.
    std::vector<std::filesystem::path> warningFiles;
    core::ImportOutcome outcome = {};
    core::ImportChanges changes = {};

    [[nodiscard]] core::ImportCounts counts() const {
        return countImported(changes, options.match, newTarget);
    }
    [[nodiscard]] std::vector<core::MergeWarning> warnings() const {
        return mergeWarnings(changes);
    }
};

/// Prints a line to standard error for each warning that the plug-in has of a file. A failure must
/// be alone on the first line there: so not before the import is done.
void printFileWarnings(const std::filesystem::path& file, const ui::ImportedDocument& document,
                       std::span<const std::filesystem::path> files = {});

/// Prints a line to standard error for each warning that the merging gave rise to.
void printMergeWarnings(const MergedImport& import);

/// "1 element added, 2 updated" and, where there are such, moved, renamed and removed ones.
[[nodiscard]] std::string changesDone(const core::ImportCounts& counts);

/// "1 added, 2 updated, 0 renamed, 3 unchanged" and, where there are such, moved, removed and
/// missing ones.
[[nodiscard]] std::string changesToCome(const core::ImportCounts& counts);

/// Prints a line for each element that was added, changed, moved, renamed or removed, or is
/// missing; with `members`, below it one for each member that another value got. An element that
/// came again as it was is only counted.
void printChanges(TextOutput& output, const MergedImport& import, bool members);

/// Writes all of it as a JSON object.
void writeImport(TextOutput& output, const MergedImport& import);

} // namespace corvane::workbench::cli
