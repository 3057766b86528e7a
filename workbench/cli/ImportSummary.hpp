#pragma once

#include "workbench/core/ImportMerge.hpp"

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <span>

namespace corvane::workbench::cli {

/// Prints a line for each piece that an import action found in its file: the element that it
/// became, how many elements of each class are below it, and the bytes of device memory; then the
/// sums.
void printImportSummary(utils::io::OutputStream& stream, std::span<const ui::MemoryUse> pieces,
                        const core::ImportOutcome& outcome);

} // namespace corvane::workbench::cli
