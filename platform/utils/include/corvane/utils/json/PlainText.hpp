#pragma once

#include <corvane/utils/string/Word.hpp>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>

/// Plain text stands in a document as it is, without an escape or a replacement: ASCII beyond the
/// control characters, without quotes and backslashes. Nearly all text is plain: the encoder asks
/// here first and looks at single characters only where the answer is no. Text of eight bytes and
/// more is looked at eight bytes at a time, which changes no answer.
namespace corvane::utils::json::encoder {

namespace detail {

/// A byte of UTF-8, or a code unit of UTF-16.
constexpr bool isPlain(char16_t c) { return c >= 0x20 && c < 0x80 && c != '"' && c != '\\'; }

/// The same for eight bytes at once.
constexpr bool isPlainWord(std::uint64_t bytes) {
    namespace word = string::word;
    return (word::notAscii(bytes) | word::lessThan(bytes, 0x20) | word::equalTo(bytes, '"') |
            word::equalTo(bytes, '\\')) == 0;
}

/// Shows `look` the words of `text`, which has at least one, and where they begin, for as long as
/// the result is true. The last word may begin inside the one before: the last bytes of a text are
/// rather seen twice than one by one.
template <class Look>
bool allWords(std::string_view text, const Look& look) {
    using string::word::kSize;
    const std::size_t last = text.size() - kSize;
    std::size_t begin = 0;
    for (; begin < last; begin += kSize)
        if (!look(string::word::load(text.data() + begin), begin))
            return false;
    return look(string::word::load(text.data() + last), last);
}

} // namespace detail

/// Whether all of `text` is plain; the empty text is.
[[nodiscard]] inline bool isPlain(std::string_view text) {
    if (text.size() < string::word::kSize)
        return std::ranges::all_of(
            text, [](char c) { return detail::isPlain(static_cast<unsigned char>(c)); });
    return detail::allWords(
        text, [](std::uint64_t word, std::size_t) { return detail::isPlainWord(word); });
}

/// Copies `text` to `target`, where there is room for it, if it is plain, looking and copying in
/// one go. Returns the end of the copy, or null when the text is not plain: what stands at `target`
/// then is of no use.
[[nodiscard]] inline char* copyPlain(char* target, std::string_view text) {
    if (text.size() < string::word::kSize) {
        for (const char c : text) {
            if (!detail::isPlain(static_cast<unsigned char>(c)))
                return nullptr;
            *target++ = c;
        }
        return target;
    }
    const bool plain = detail::allWords(text, [&](std::uint64_t word, std::size_t begin) {
        std::memcpy(target + begin, text.data() + begin, string::word::kSize);
        return detail::isPlainWord(word);
    });
    return plain ? target + text.size() : nullptr;
}

} // namespace corvane::utils::json::encoder
