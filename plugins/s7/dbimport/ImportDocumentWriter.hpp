#pragma once

#include "dbimport/DataBlockRecord.hpp"
#include "dbimport/ImportLimits.hpp"

#include <corvane/utils/io/InputStream.hpp>
#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;

/// Writes the import document of numbered data blocks: a JSON array with the default command, where
/// the document must bring one, and an entry for each block. Trees are destroyed as soon as they
/// are written. Returns what each block takes of the PLC's memory.
///
/// Throws std::runtime_error with a message of the importer, or what the stream throws.
[[nodiscard]] std::vector<ui::MemoryUse> writeDataBlocks(utils::io::OutputStream& stream,
                                                         std::vector<DataBlockRecord> records,
                                                         const ImportContext& context,
                                                         const ImportLimits& limits);

/// The whole road from a .db file to its import document. Throws as `readDbFile`,
/// `numberDataBlocks` and `writeDataBlocks` do.
[[nodiscard]] ui::ImportedDocument makeImportDocument(utils::io::InputStream& stream,
                                                      const ImportContext& context,
                                                      const ImportLimits& limits = {});

} // namespace corvane::workbench::plugins::s7Driver
