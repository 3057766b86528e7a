#include <corvane/utils/json/PlainText.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <string>
#include <string_view>

namespace corvane::utils::json::encoder {
namespace {

constexpr std::size_t kLongest = 40;
constexpr int kBytes = std::numeric_limits<unsigned char>::max() + 1;

/// Byte by byte, in the words of JSON: what needs neither an escape nor a look at its encoding.
bool standsAsItIs(std::string_view text) {
    return std::ranges::all_of(text, [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        const bool control = byte <= 0x1F;
        const bool ascii = byte <= 0x7F;
        return ascii && !control && byte != 0x22 && byte != 0x5C;
    });
}

/// Checks both operations with a text that is in memory of exactly its size.
void check(std::string_view text) {
    constexpr char kUntouched = '#';
    const bool plain = standsAsItIs(text);
    ASSERT_EQ(isPlain(text), plain) << ::testing::PrintToString(text);
    std::string target(text.size() + 1, kUntouched);
    const char* const end = copyPlain(target.data(), text);
    ASSERT_EQ(end, plain ? target.data() + text.size() : nullptr) << ::testing::PrintToString(text);
    if (plain) {
        ASSERT_EQ(std::string_view(target).substr(0, text.size()), text);
    }
    ASSERT_EQ(target.back(), kUntouched) << ::testing::PrintToString(text);
}

TEST(PlainText, AnEmptyTextIsPlain) {
    EXPECT_TRUE(isPlain(""));
    char target = '#';
    EXPECT_EQ(copyPlain(&target, ""), &target);
    EXPECT_EQ(target, '#');
}

TEST(PlainText, IsSaidOfTexts) {
    struct Case {
        std::string_view text;
        bool plain;
    };
    for (const Case& one : {
             Case{"Speed_1", true},
             {"The speed of axis 7, in mm/s", true},
             {" !#[]~\x7F", true},
             {"line\n", false},
             {"C:\\temp", false},
             {"the \"fast\" one", false},
             {"K\xC3\xBChlung", false},
             {"a name that has its umlaut late: \xC3\xBC", false},
             {std::string_view("zero\0inside", 11), false},
         }) {
        EXPECT_EQ(isPlain(one.text), one.plain) << ::testing::PrintToString(one.text);
        EXPECT_EQ(standsAsItIs(one.text), one.plain) << ::testing::PrintToString(one.text);
    }
}

TEST(PlainText, EveryByteAtEveryPlace) {
    // The others are a letter, then the two plain bytes at the edges.
    for (const char other : {'a', ' ', '\x7F'})
        for (std::size_t size = 1; size <= kLongest; ++size)
            for (std::size_t place = 0; place < size; ++place)
                for (int byte = 0; byte < kBytes; ++byte) {
                    std::string text(size, other);
                    text[place] = static_cast<char>(byte);
                    ASSERT_NO_FATAL_FAILURE(check(text));
                }
}

// Bytes are looked at several at a time, and none may change what is said of its neighbour.
TEST(PlainText, EveryPairOfBytes) {
    for (const std::size_t size : {std::size_t{2}, std::size_t{8}, std::size_t{13}})
        for (int first = 0; first < kBytes; ++first)
            for (int second = 0; second < kBytes; ++second) {
                std::string text(size, 'a');
                text[size / 2 - 1] = static_cast<char>(first);
                text[size / 2] = static_cast<char>(second);
                ASSERT_NO_FATAL_FAILURE(check(text));
            }
}

} // namespace
} // namespace corvane::utils::json::encoder
