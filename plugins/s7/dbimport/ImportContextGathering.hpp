#pragma once

#include "dbimport/ImportContext.hpp"

namespace corvane::workbench::plugins::s7Driver {

class Plc;

/// What an import into `plc` must know of its children: the command that new items get, the numbers
/// of its data blocks, and the commands of the items in them.
[[nodiscard]] ImportContext gatherImportContext(const Plc& plc);

} // namespace corvane::workbench::plugins::s7Driver
