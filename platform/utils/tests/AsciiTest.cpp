#include <corvane/utils/string/Ascii.hpp>

#include <gtest/gtest.h>

#include <limits>
#include <string_view>

namespace corvane::utils::string::ascii {
namespace {

TEST(Ascii, TenCharactersOfAnyTypeAreDigits) {
    constexpr std::string_view kDigits = "0123456789";
    for (unsigned byte = 0; byte < 256; ++byte) {
        const bool expected = kDigits.contains(static_cast<char>(byte));
        EXPECT_EQ(isDigit(static_cast<char>(byte)), expected) << byte;
        EXPECT_EQ(isDigit(static_cast<unsigned char>(byte)), expected) << byte;
    }
    unsigned digits = 0;
    for (char32_t unit = 0; unit <= std::numeric_limits<char16_t>::max(); ++unit)
        digits += isDigit(static_cast<char16_t>(unit)) ? 1U : 0U;
    EXPECT_EQ(digits, kDigits.size());
    EXPECT_TRUE(isDigit(u'0'));
    EXPECT_TRUE(isDigit(u'9'));
}

TEST(Ascii, OnlyCapitalsAreFolded) {
    constexpr std::string_view kCapitals = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyz";
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        const auto place = kCapitals.find(letter);
        const char expected = place == std::string_view::npos ? letter : kLetters[place];
        EXPECT_EQ(foldCase(letter), expected) << byte;
    }
}

} // namespace
} // namespace corvane::utils::string::ascii
