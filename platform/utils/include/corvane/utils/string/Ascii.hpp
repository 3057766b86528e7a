#pragma once

/// The letters and digits of ASCII. Whatever is not ASCII is neither, and no locale is asked.
namespace corvane::utils::string::ascii {

/// The bit that tells a lower-case letter from its capital.
inline constexpr unsigned char kCaseBit = 'a' - 'A';

/// '0' to '9', in any type of character.
template <class Character>
[[nodiscard]] constexpr bool isDigit(Character character) {
    return character >= Character('0') && character <= Character('9');
}

/// The lower-case letter of a capital, and every other byte as it is.
[[nodiscard]] constexpr char foldCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + kCaseBit) : letter;
}

} // namespace corvane::utils::string::ascii
