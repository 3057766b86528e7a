#include <corvane/utils/string/Utf.hpp>

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace corvane::utils::string::detail {
namespace {

using namespace std::string_view_literals;

struct ValidCase {
    std::string_view utf8;
    std::u16string_view utf16;
};

constexpr ValidCase kValid[] = {
    {"", u""},
    {"a", u"a"},
    {"PLC"sv, u"PLC"},
    {"exactly8", u"exactly8"},
    {"a text that is longer than one word", u"a text that is longer than one word"},
    {"\0"sv, u"\0"sv},
    {"\x7f", u"\x7f"},
    {"\xc2\x80", u"\u0080"},
    {"Gr\xc3\xb6\xc3\x9f"
     "e",
     u"Gr\u00f6\u00dfe"},
    {"a long beginning \xc3\xa9", u"a long beginning \u00e9"},
    {"\xdf\xbf\xe0\xa0\x80", u"\u07ff\u0800"},
    {"\xe2\x82\xac", u"\u20ac"},
    {"\xed\x9f\xbf\xee\x80\x80", u"\ud7ff\ue000"},
    {"\xef\xbf\xbd\xef\xbf\xbe\xef\xbf\xbf", u"\ufffd\ufffe\uffff"},
    {"\xf0\x90\x80\x80", u"\U00010000"},
    {"x\xf0\x9f\x98\x80y", u"x\U0001f600y"},
    {"\xf4\x8f\xbf\xbf", u"\U0010ffff"},
};

TEST(Utf, ConvertsBothWays) {
    for (const auto& [utf8, utf16] : kValid) {
        EXPECT_EQ(utf8ToUtf16(utf8), utf16) << utf8;
        EXPECT_EQ(utf16ToUtf8(utf16), utf8) << utf8;
        EXPECT_TRUE(isValidUtf8(utf8)) << utf8;
        EXPECT_EQ(replaceMalformedUtf8(utf8), utf8);
    }
}

// Texts of one character after the other are converted by words: wherever a word begins and ends,
// what is not ASCII and what stands around it comes out the same.
TEST(Utf, ConvertsAtEveryPlace) {
    constexpr std::size_t kLongest = 20;
    for (std::size_t size = 0; size <= kLongest; ++size)
        for (std::size_t place = 0; place <= size; ++place)
            for (const auto& [utf8, utf16] : kValid) {
                std::string narrow(size, '~');
                std::u16string wide(size, u'~');
                narrow.insert(place, utf8);
                wide.insert(place, utf16);
                EXPECT_EQ(utf8ToUtf16(narrow), wide) << narrow;
                EXPECT_EQ(utf16ToUtf8(wide), narrow) << narrow;
            }
}

TEST(Utf, Appends) {
    std::u16string wide = u"x\u20ac";
    appendUtf16(wide, "a\xc3\xa9");
    EXPECT_EQ(wide, u"x\u20aca\u00e9");
    std::string narrow = "x";
    appendUtf8(narrow, u"a\u00e9\U0001f600");
    EXPECT_EQ(narrow, "xa\xc3\xa9\xf0\x9f\x98\x80");
}

TEST(Utf, EveryCharacterSurvives) {
    std::u16string all;
    for (char32_t c = 0; c <= 0x10ffff; ++c) {
        if (c >= 0xd800 && c <= 0xdfff)
            continue;
        if (c >= 0x10000)
            all += static_cast<char16_t>(0xd7c0 + (c >> 10));
        all += static_cast<char16_t>(c >= 0x10000 ? 0xdc00 + (c & 0x3ff) : c);
    }
    const std::string utf8 = utf16ToUtf8(all);
    EXPECT_EQ(utf8.size(), 0x80u + 2 * 0x780u + 3 * (0xf800u - 0x800u) + 4 * 0x100000u);
    EXPECT_TRUE(isValidUtf8(utf8));
    EXPECT_EQ(utf8ToUtf16(utf8), all);
}

/// In `shown`, '?' stands for one U+FFFD.
struct MalformedCase {
    std::string_view bytes;
    std::string_view shown;
};

constexpr MalformedCase kMalformed[] = {
    {"\x80", "?"},
    {"\xbf\xbf", "??"},
    {"a\xff", "a?"},
    {"\xfe\xff", "??"},
    {"\xc0\xaf", "??"},
    {"\xc1\xbf", "??"},
    {"\xc2", "?"},
    {"\xc2\x41", "?A"},
    {"\xc2\xc2\x80", "?\xc2\x80"},
    {"\xe0\x80\xbf", "???"},
    {"\xe0\x9f\x80", "???"},
    {"\xe0\xa0\x41", "?A"},
    {"\xe2\x82\x41", "?A"},
    {"\xe2\x82", "?"},
    {"\xe2", "?"},
    {"\xed\xa0\x80", "???"},
    {"\xed\xbf\xbf", "???"},
    {"\xf0\x80\x80\x41", "???A"},
    {"\xf0\x8f\xbf\xbf", "????"},
    {"\xf0\x90\x80\x41", "?A"},
    {"\xf1\x80\x80\xe1\x80\xc2\x62", "???b"},
    {"\xf4\x90\x80\x80", "????"},
    {"\xf4\x91\x92\x93\xff\x41\x80\xbf\x42", "?????A??B"},
    {"\xf5\x80\x80\x80", "????"},
    {"\xf8\x88\x80\x80\x80", "?????"},
    // Unicode, tables 3-8 to 3-11.
    {"\xc0\xaf\xe0\x80\xbf\xf0\x81\x82\x41", "????????A"},
    {"\xed\xa0\x80\xed\xbf\xbf\xed\xaf\x41", "????????A"},
    {"\xe1\x80\xe2\xf0\x91\x92\xf1\xbf\x41", "????A"},
    {"behind a long beginning \xe2\x82 and before more",
     "behind a long beginning ? and before more"},
};

TEST(Utf, ReplacesMaximalMalformedPieces) {
    for (const auto& [bytes, shown] : kMalformed) {
        std::string expected;
        for (const char c : shown)
            expected += c == '?' ? "\xef\xbf\xbd" : std::string(1, c);
        EXPECT_FALSE(isValidUtf8(bytes)) << shown;
        EXPECT_EQ(replaceMalformedUtf8(bytes), expected) << shown;
        EXPECT_EQ(utf16ToUtf8(utf8ToUtf16(bytes)), expected) << shown;
    }
}

TEST(Utf, TellsTheWellFormedPrefix) {
    EXPECT_EQ(validUtf8Prefix(""), 0u);
    EXPECT_EQ(validUtf8Prefix("abc"), 3u);
    EXPECT_EQ(validUtf8Prefix("a\xc3\xa9\xff"
                              "b"),
              3u);
    EXPECT_EQ(validUtf8Prefix("0123456789\xe2\x82"), 10u);
}

TEST(Utf, LoneSurrogatesAreReplaced) {
    constexpr char16_t kHigh = 0xd83d;
    constexpr char16_t kLow = 0xde00;
    const std::u16string_view texts[] = {{&kHigh, 1}, {&kLow, 1}};
    for (const auto text : texts)
        EXPECT_EQ(utf16ToUtf8(text), "\xef\xbf\xbd");
    EXPECT_EQ(utf16ToUtf8(std::u16string{kLow, kHigh}), "\xef\xbf\xbd\xef\xbf\xbd");
    EXPECT_EQ(utf16ToUtf8(std::u16string{kHigh, kHigh, kLow, u'a'}), "\xef\xbf\xbd\xf0\x9f\x98\x80"
                                                                     "a");
    EXPECT_EQ(utf16ToUtf8(std::u16string{kHigh, u'a'}), "\xef\xbf\xbd"
                                                        "a");
}

} // namespace
} // namespace corvane::utils::string::detail
