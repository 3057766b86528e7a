#pragma once

#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class ImportContext;
struct DataBlockRecord;
struct ImportFindings;

/// Gives every data block its number: the one in its name where that is "DB" and digits, whatever
/// the PLC has; else the one that it has already; else, in the order of the file, the numbers above
/// all others. Numbers are 16 bits wide and wrap. That two blocks may end up with one number, of
/// the file or of the PLC, is left for the user to see.
///
/// Numbers that were guessed and those that wrapped are noted in `findings`.
///
/// Throws std::out_of_range for a number in a name that does not fit 32 bits.
void numberDataBlocks(std::vector<DataBlockRecord>& records, const ImportContext& context,
                      ImportFindings& findings);

} // namespace corvane::workbench::plugins::s7Driver
