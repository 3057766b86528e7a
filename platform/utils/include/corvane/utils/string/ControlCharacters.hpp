#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/// Control characters: U+0000 to U+001F and U+007F to U+009F. A terminal obeys them, and no text
/// that is one line contains any.
namespace corvane::utils::string {

/// Whether the code point is one of them. Characters that only change the direction of text are
/// none.
[[nodiscard]] constexpr bool isControlCharacter(char32_t codePoint) {
    return codePoint < 0x20 || (codePoint >= 0x7f && codePoint < 0xa0);
}

/// The bytes of the control character that `utf8`, which is not empty, begins with: 1 or, above
/// U+007F, 2; 0 where it begins with another character.
[[nodiscard]] inline std::size_t controlCharacterAtFront(std::string_view utf8) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(utf8[i]); };
    if (byte(0) < 0x80)
        return isControlCharacter(byte(0)) ? 1 : 0;
    // Behind the first byte 0xC2, the second one is the code point.
    const bool isTwo = byte(0) == 0xc2 && utf8.size() > 1 && byte(1) >= 0x80;
    return isTwo && isControlCharacter(byte(1)) ? 2 : 0;
}

/// Whether there is a control character in the text.
[[nodiscard]] inline bool hasControlCharacter(std::string_view utf8) {
    for (; !utf8.empty(); utf8.remove_prefix(1))
        if (controlCharacterAtFront(utf8) != 0)
            return true;
    return false;
}
[[nodiscard]] inline bool hasControlCharacter(std::u16string_view utf16) {
    return std::ranges::any_of(utf16, [](char16_t unit) { return isControlCharacter(unit); });
}

/// `utf8` with each control character that is not in `kept` replaced by one "?", so that the text
/// has as many characters as before.
[[nodiscard]] inline std::string maskControlCharacters(std::string_view utf8,
                                                       std::string_view kept = {}) {
    std::string masked;
    masked.reserve(utf8.size());
    while (!utf8.empty()) {
        const auto size = controlCharacterAtFront(utf8);
        const bool mask = size != 0 && !kept.contains(utf8.front());
        masked += mask ? '?' : utf8.front();
        utf8.remove_prefix(mask ? size : 1);
    }
    return masked;
}

} // namespace corvane::utils::string
