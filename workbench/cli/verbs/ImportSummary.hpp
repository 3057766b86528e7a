#pragma once

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/import/ImportMerge.hpp"

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <span>

namespace corvane::workbench::cli {

/// Prints a line for each piece that an import action found in its file: the element that it
/// became, how many elements of each class are below it, and the bytes of device memory; then the
/// sums.
void printImportSummary(TextOutput& output, std::span<const ui::MemoryUse> pieces,
                        const core::ImportOutcome& outcome);

} // namespace corvane::workbench::cli
