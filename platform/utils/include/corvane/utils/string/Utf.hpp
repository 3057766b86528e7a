#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>
#include <string>
#include <string_view>

/// Conversion between UTF-8, in which the system keeps text, and UTF-16, in which it is shown.
///
/// Malformed input never fails: each maximal ill-formed sequence (Unicode, table 3-8) of UTF-8 and
/// each lone surrogate of UTF-16 becomes one U+FFFD.
namespace corvane::utils::string::detail {

[[nodiscard]] CORVANE_EXPORT std::u16string utf8ToUtf16(std::string_view utf8);
[[nodiscard]] CORVANE_EXPORT std::string utf16ToUtf8(std::u16string_view utf16);

/// As the functions above, appended to `target`.
CORVANE_EXPORT void appendUtf16(std::u16string& target, std::string_view utf8);
CORVANE_EXPORT void appendUtf8(std::string& target, std::u16string_view utf16);

/// How many bytes at the front of `bytes` are well-formed UTF-8.
[[nodiscard]] CORVANE_EXPORT std::size_t validUtf8Prefix(std::string_view bytes);

[[nodiscard]] inline bool isValidUtf8(std::string_view bytes) {
    return validUtf8Prefix(bytes) == bytes.size();
}

/// `bytes` with each maximal ill-formed sequence replaced by U+FFFD.
[[nodiscard]] CORVANE_EXPORT std::string replaceMalformedUtf8(std::string_view bytes);

} // namespace corvane::utils::string::detail
