#pragma once

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <expected>
#include <filesystem>
#include <string>

namespace corvane::workbench::plugins::s7Driver {

class Plc;

/// Makes of a .db file the document that, imported below `plc`, gives it the file's data blocks.
/// The PLC itself is only looked at: items that it has already keep their commands, data blocks
/// their numbers.
///
/// Whatever fails, the file, its syntax or its size, ends in the error text; nothing is thrown and
/// there is no partial document.
[[nodiscard]] std::expected<ui::ImportedDocument, std::u16string>
importDataBlocks(const Plc& plc, const std::filesystem::path& filePath);

} // namespace corvane::workbench::plugins::s7Driver
