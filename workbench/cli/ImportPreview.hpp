#pragma once

#include "workbench/core/PluginHost.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <corvane/utils/io/OutputStream.hpp>

namespace corvane::workbench::cli {

/// Prints what an import changed: a line of counts, then one line for each element that was added,
/// changed or renamed. An element that came again as it was is only counted. `newTarget` is the
/// element that was added to import into, or null.
void printImportPreview(utils::io::OutputStream& stream, const core::ImportChanges& changes,
                        const model::Element* newTarget);

} // namespace corvane::workbench::cli
