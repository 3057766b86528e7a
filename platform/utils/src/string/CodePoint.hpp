#pragma once

namespace corvane::utils::string {

/// Writes a character as UTF-8, at most 4 bytes, and returns the end of what it wrote. `character`
/// is a Unicode scalar value: not beyond U+10FFFF and no surrogate.
char* encodeUtf8(char32_t character, char* target);

} // namespace corvane::utils::string
