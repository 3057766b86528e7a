#pragma once

#include "dbimport/facts/ImportLimits.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;
struct DataBlockRecord;
struct ImportFindings;

/// What the document is written into.
using utils::io::StringOutputStream;

/// Makes the import document of numbered data blocks: a JSON array with the default command, where
/// the document must bring one, and an entry for each block. With it comes what each block takes of
/// the PLC's memory. What the layout shows that a user should know is noted in `findings`.
///
/// Throws std::runtime_error with a message of the importer.
[[nodiscard]] ui::ImportedDocument writeDataBlocks(std::vector<DataBlockRecord> records,
                                                   const ImportContext& context,
                                                   const ImportLimits& limits,
                                                   ImportFindings& findings);

} // namespace corvane::workbench::plugins::s7Driver
