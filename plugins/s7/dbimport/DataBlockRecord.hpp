#pragma once

#include "dbimport/DeclarationTree.hpp"
#include "dbimport/ImportLimits.hpp"

#include <corvane/utils/io/InputStream.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;

/// A data block of the file.
struct DataBlockRecord {
    std::string name;
    std::optional<std::uint16_t> dbNumber; ///< empty until it is known
    DeclarationTree root;
};

/// Reads a .db file: its data blocks in the order of the file, without those that have no body. A
/// block that the PLC has already brings its number along. The trees keep pointing at the context.
///
/// Throws std::runtime_error with a message of the importer, the standard conversion errors, or
/// what the stream throws.
[[nodiscard]] std::vector<DataBlockRecord> readDbFile(utils::io::InputStream& stream,
                                                      const ImportContext& context,
                                                      const ImportLimits& limits);

/// Gives every data block its number: the one in its name where that is "DB" and digits, whatever
/// the PLC has; else the one that it has already; else, in the order of the file, the numbers above
/// all others. Numbers are 16 bits wide and wrap. That two blocks may end up with one number, of
/// the file or of the PLC, is left for the user to see.
///
/// Throws std::out_of_range for a number in a name that does not fit 32 bits.
void numberDataBlocks(std::vector<DataBlockRecord>& records, const ImportContext& context);

} // namespace corvane::workbench::plugins::s7Driver
