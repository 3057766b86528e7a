#pragma once

#include <corvane/utils/io/InputStream.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <vector>

namespace corvane::workbench::plugins::s7Driver {

struct ImportFindings;

/// What a user reads of the findings of an import, the most serious first. Few lines, of bounded
/// length, however large the file is and however many of its data blocks are concerned.
///
/// The file is read anew as far as places are to be told; one that can be read only once keeps them
/// to itself. Nothing of that is thrown.
[[nodiscard]] std::vector<ui::ImportWarning> warningsOf(const ImportFindings& findings,
                                                        utils::io::InputStream& stream);

} // namespace corvane::workbench::plugins::s7Driver
