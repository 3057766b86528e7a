#pragma once

#include "dbimport/facts/ImportLimits.hpp"

#include <corvane/utils/io/InputStream.hpp>
#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <expected>
#include <filesystem>

namespace corvane::workbench::plugins::s7Driver {

class Plc;

/// A document, or what tells a user why there is none.
using ImportResult = std::expected<ui::ImportedDocument, ui::ImportFailure>;

/// Makes of a .db file the document that, imported below `plc`, gives it the file's data blocks.
/// The PLC itself is only looked at: items that it has already keep their commands, data blocks
/// their numbers.
///
/// Whatever fails, the file, its syntax or its size, ends in the error text, with the place in the
/// file that is at fault and a hint where there is one; nothing is thrown and there is no partial
/// document. The file is closed when the operation returns.
[[nodiscard]] ImportResult importDataBlocks(const Plc& plc, const std::filesystem::path& filePath);

/// The same for the bytes of a file, which is called `filePath`.
[[nodiscard]] ImportResult importDataBlocks(const Plc& plc, const std::filesystem::path& filePath,
                                            utils::io::InputStream& stream,
                                            const ImportLimits& limits = {});

/// The document alone, of what is read from `stream` to its end. Throws std::runtime_error with
/// a message of the importer, the standard conversion errors, or what the stream throws.
[[nodiscard]] ui::ImportedDocument
makeImportDocument(const Plc& plc, utils::io::InputStream& stream, const ImportLimits& limits = {});

/// What comes of the import of a file: the document that `import` makes, or, whatever it throws,
/// the translated text that names the file and the failure. The blank at that text's end is part of
/// it and stays: translations are looked up by the whole text.
[[nodiscard]] ImportResult importResult(const std::filesystem::path& filePath,
                                        function_ref<ui::ImportedDocument()> import);

} // namespace corvane::workbench::plugins::s7Driver
