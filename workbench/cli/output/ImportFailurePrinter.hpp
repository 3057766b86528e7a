#pragma once

#include "workbench/cli/output/TextOutput.hpp"

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <filesystem>

/// Why an import failed, for people and for programs.
namespace corvane::workbench::cli {

/// Prints the failure's text to standard error, alone on its line so that programs can read it, and
/// below it what there is of the rest: FILE:LINE:COLUMN, the line of the file with a caret under
/// the column, and the hint.
void printImportFailure(const std::filesystem::path& file, const ui::ImportFailure& failure);

/// Writes the same to standard output, as a JSON object whose message is the first line of the
/// text.
void writeImportFailure(TextOutput& output, const std::filesystem::path& file,
                        const ui::ImportFailure& failure);

} // namespace corvane::workbench::cli
