#pragma once

#include "dbimport/facts/VariableDeclaration.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// The declaration of a scalar as nearly all lines of an export have it:
///
///     Speed { ExternalWritable := 'False'} : Int := 100;
///
/// A name of letters, digits and underscores, spaces between the words and nothing else, a known
/// type, an initial value of a word, a quoted text, or one behind the other.
struct PlainDeclaration {
    std::string_view name; ///< where it stands in the file's bytes
    const TypeFacts* type = nullptr;
    ExternalAccess access;
    /// The n of String[n], in characters; empty where none is declared.
    std::optional<std::uint64_t> elementCount;
    std::size_t size = 0; ///< in bytes of the file, with the semicolon
};

/// Reads the plain declaration at the start of `text`. False for everything else: declarations of
/// another form, faulty ones, and those that `text` does not hold to their end. All of them are the
/// grammar's (`DbFileParser`); this is only a shorter way to the same result. Without it every
/// import ends as it does with it, only later
/// (ImportBuffers.PlainDeclarationsAreWhatTheGrammarReads).
[[nodiscard]] bool readPlainDeclaration(std::string_view text, PlainDeclaration& declaration);

} // namespace corvane::workbench::plugins::s7Driver
