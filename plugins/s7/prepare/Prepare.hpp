#pragma once

#include "dbimport/facts/ImportLimits.hpp"

#include <corvane/workbench/ui/Preparer.hpp>

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// What a user may ask for beside the files.
struct Options {
    /// A data block that does not say which access it has is taken to have standard access. One
    /// that says to have optimized access is left out all the same.
    bool standardAccess = false;
    /// Variables that are not accessible from outside become read-only ones: those behind them then
    /// have the addresses of the PLC, since the import gives a hidden variable no place.
    bool showHidden = false;
    /// The values of constants that serve as bounds of arrays and lengths of texts. Case does not
    /// count.
    std::map<std::string, std::int32_t, std::less<>> constants;
    /// The names of the data blocks that are wanted; all, where it is empty. Case does not count.
    std::vector<std::string> blocks;
};

/// How far it goes before something is left out as too large: what the import takes.
struct Limits {
    ImportLimits import;
    /// Of the whole text that is made.
    std::uint64_t outputBytes = std::uint64_t{1} << 30U;
};

/// Makes of sources, as they are exported, the plain source of their data blocks that the import
/// takes: everything that stands elsewhere is written out where it is used, in the layout of
/// standard access. The sources may refer to each other in any order. Their bytes may be UTF-8,
/// with a byte order mark or without, or Windows-1252.
///
/// Whatever cannot be made plain is left out and named in the result; nothing is thrown but
/// std::bad_alloc. What the sources ask for is measured before anything is written: no text comes
/// into being that exceeds the limits. Of its own result it makes the same bytes.
[[nodiscard]] ui::PreparedSource prepareSources(std::span<const ui::SourceFile> files,
                                                const Options& options, const Limits& limits = {});

} // namespace corvane::workbench::plugins::s7Driver::prepare
