#pragma once

#include "workbench/cli/output/MemoryRows.hpp"

#include <corvane/utils/io/OutputStream.hpp>

namespace corvane::workbench::cli {

/// Writes a picture as an SVG document of its own: well-formed whatever names hold. Each part tells
/// on pointing at it what it is; bits are told by their numbers, gaps by dots, and what several
/// elements hold by hatching and a "!", so that no colour is needed.
void writeMemorySvg(const MemoryPicture& picture, utils::io::OutputStream& stream);

} // namespace corvane::workbench::cli
