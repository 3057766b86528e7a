#include <corvane/utils/string/Word.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace corvane::utils::string::word {
namespace {

TEST(Word, LoadsTextsThatAreShorter) {
    constexpr std::string_view kText = "\x01\x7f\x80\xc3\xa9z\xff";
    for (std::size_t size = 0; size < kSize; ++size) {
        // In memory of exactly its size, and the same as with zeros in a whole word behind it.
        const std::string text(kText.substr(0, size));
        std::string filled = text;
        filled.resize(kSize);
        EXPECT_EQ(loadShort(text.data(), size), load(filled.data())) << size;
    }
}

TEST(Word, TellsWhereEightBytesContinueCharacters) {
    for (unsigned byte = 0; byte < 256; ++byte)
        for (std::size_t place = 0; place < kSize; ++place) {
            // Neighbours of every kind: what is before and behind must not show.
            for (const char other : {'a', '\x80', '\xbf', '\xc3', '\xff', '\0'}) {
                std::string text(kSize, other);
                text[place] = static_cast<char>(byte);
                const auto isContinuation = [](char c) {
                    const auto value = static_cast<unsigned char>(c);
                    return value >= 0x80 && value <= 0xbf;
                };
                EXPECT_EQ(countOf(continuations(load(text.data()))),
                          static_cast<std::size_t>(std::ranges::count_if(text, isContinuation)))
                    << byte << " at " << place;
            }
        }
}

} // namespace
} // namespace corvane::utils::string::word
