#include "dbimport/facts/ForeignNames.hpp"

#include <array>

namespace corvane::workbench::plugins::s7Driver {

namespace {

/// The characters of the bytes from 0x80 to 0x9F. All others are those of their codes.
constexpr unsigned char kFirst = 0x80;
constexpr std::array<char16_t, 32> kCharacters = {
    u'\u20AC', 0x81,      u'\u201A', u'\u0192', u'\u201E', u'\u2026', u'\u2020', u'\u2021',
    u'\u02C6', u'\u2030', u'\u0160', u'\u2039', u'\u0152', 0x8D,      u'\u017D', 0x8F,
    0x90,      u'\u2018', u'\u2019', u'\u201C', u'\u201D', u'\u2022', u'\u2013', u'\u2014',
    u'\u02DC', u'\u2122', u'\u0161', u'\u203A', u'\u0153', 0x9D,      u'\u017E', u'\u0178',
};

char16_t characterOf(char byte) {
    const auto code = static_cast<unsigned char>(byte);
    const bool special = code >= kFirst && code < kFirst + kCharacters.size();
    return special ? kCharacters[code - kFirst] : char16_t{code};
}

} // namespace

std::string windows1252ToUtf8(std::string_view bytes) {
    std::u16string text;
    text.reserve(bytes.size());
    for (const char byte : bytes)
        text.push_back(characterOf(byte));
    return utils::string::detail::utf16ToUtf8(text);
}

void ForeignNames::readAsWindows1252(std::string& name) {
    name = windows1252ToUtf8(name);
    if (count_++ == 0)
        first_ = name;
}

} // namespace corvane::workbench::plugins::s7Driver
