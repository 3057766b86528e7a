#pragma once

#include "Source.hpp"

#include <memory_resource>
#include <string_view>

/// Strings, numbers and words of a text whose strings are known to close.
namespace corvane::utils::json::decoder::detail {

/// The string whose opening quote stands at `quote`: a piece of the text itself, or, where escapes
/// had to be resolved, of memory from `arena`. Throws DecodeError for a malformed escape.
std::string_view readString(const Source& source, const char* quote,
                            std::pmr::memory_resource& arena);

/// The characters of the number that begins at `begin`. Throws DecodeError when it is malformed.
std::string_view readNumber(const Source& source, const char* begin);

/// Throws DecodeError unless the word at `begin` is `word` and ends there.
void expectWord(const Source& source, const char* begin, std::string_view word);

} // namespace corvane::utils::json::decoder::detail
