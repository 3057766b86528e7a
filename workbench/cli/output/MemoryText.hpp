#pragma once

#include "workbench/cli/output/MemoryRows.hpp"

#include <corvane/workbench/function_ref.hpp>

namespace corvane::workbench::cli {

/// Gives the lines of a picture of text, one after the other. A byte is eight characters, one for
/// each bit from bit 0 on: its number where the bit is an element by itself, "-" behind the name of
/// a larger one, "." where it is no one's and "!" where it is several elements'. Below a row stands
/// what had no room in it.
void writeMemoryText(const MemoryPicture& picture, function_ref<void(std::string_view)> writeLine);

} // namespace corvane::workbench::cli
