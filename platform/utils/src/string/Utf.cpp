#include <corvane/utils/string/Utf.hpp>

#include <corvane/utils/string/Word.hpp>

#include "CodePoint.hpp"

#include <utf8.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace corvane::utils::string {

namespace {

constexpr char32_t kReplacement = 0xfffd;

constexpr bool isAscii(char byte) { return (byte & 0x80) == 0; }
constexpr bool isAscii(char16_t unit) { return unit < 0x80; }

const char* skipAscii(const char* text, const char* end) {
    for (; static_cast<std::size_t>(end - text) >= word::kSize; text += word::kSize)
        if (const auto mask = word::notAscii(word::load(text)))
            return text + word::firstOf(mask);
    return std::find_if_not(text, end, [](char c) { return isAscii(c); });
}

/// The bits of a word of characters that no ASCII has.
template <class Character>
constexpr std::uint64_t kBeyondAscii =
    sizeof(Character) == 1 ? word::kHighBits : 0xff80ff80ff80ff80u;

/// Copies ASCII from one encoding to the other up to the first character that is none, and moves
/// both pointers behind it; there must be room for as many characters as there are. A word at a
/// time, for as long as there is a whole one.
template <class From, class To>
void copyAscii(const From*& text, const From* end, To*& target) {
    constexpr std::ptrdiff_t kCount = word::kSize / sizeof(From);
    for (; end - text >= kCount; text += kCount, target += kCount) {
        std::uint64_t characters = 0;
        std::memcpy(&characters, text, word::kSize);
        if ((characters & kBeyondAscii<From>) != 0)
            break;
        To copies[kCount];
        std::transform(text, text + kCount, copies, [](From c) { return static_cast<To>(c); });
        std::memcpy(target, copies, sizeof copies);
    }
    for (; text != end && isAscii(*text); ++text)
        *target++ = static_cast<To>(*text);
}

/// What may follow a lead byte: how many bytes, and the range of the first of them. The others are
/// 0x80 to 0xbf. Unicode, table 3-7.
struct Trail {
    std::uint8_t count;
    std::uint8_t low;
    std::uint8_t high;
};

constexpr Trail trailOf(std::uint8_t lead) {
    if (lead < 0xc2)
        return {0, 0, 0};
    if (lead < 0xe0)
        return {1, 0x80, 0xbf};
    if (lead == 0xe0)
        return {2, 0xa0, 0xbf};
    if (lead == 0xed)
        return {2, 0x80, 0x9f};
    if (lead < 0xf0)
        return {2, 0x80, 0xbf};
    if (lead == 0xf0)
        return {3, 0x90, 0xbf};
    if (lead < 0xf4)
        return {3, 0x80, 0xbf};
    if (lead == 0xf4)
        return {3, 0x80, 0x8f};
    return {0, 0, 0};
}

/// Past the ill-formed sequence that begins at `text`: the longest piece that could still have
/// begun a character, or else a single byte. utfcpp replaces in other portions, hence this one.
const char* skipMalformed(const char* text, const char* end) {
    auto [count, low, high] = trailOf(static_cast<std::uint8_t>(*text++));
    for (; count > 0 && text != end; --count, ++text) {
        const auto byte = static_cast<std::uint8_t>(*text);
        if (byte < low || byte > high)
            break;
        low = 0x80;
        high = 0xbf;
    }
    return text;
}

const char* skipValid(const char* text, const char* end) {
    return utf8::find_invalid(skipAscii(text, end), end);
}

char16_t* toUtf16(const char* text, const char* end, char16_t* target) {
    copyAscii(text, end, target);
    for (; text != end; text = skipMalformed(text, end)) {
        const char* valid = utf8::find_invalid(text, end);
        target = utf8::unchecked::utf8to16(text, valid, target);
        if (valid == end)
            break;
        text = valid;
        *target++ = static_cast<char16_t>(kReplacement);
    }
    return target;
}

constexpr bool isHighSurrogate(char16_t c) { return c >= 0xd800 && c <= 0xdbff; }
constexpr bool isLowSurrogate(char16_t c) { return c >= 0xdc00 && c <= 0xdfff; }

/// The character at `text`, which moves behind it.
char32_t takeCharacter(const char16_t*& text, const char16_t* end) {
    const char16_t first = *text++;
    if (isHighSurrogate(first) && text != end && isLowSurrogate(*text))
        return 0x10000u + ((first - 0xd800u) << 10) + (*text++ - 0xdc00u);
    return isHighSurrogate(first) || isLowSurrogate(first) ? kReplacement : char32_t{first};
}

char* toUtf8(const char16_t* text, const char16_t* end, char* target) {
    while (text != end)
        target = encodeUtf8(takeCharacter(text, end), target);
    return target;
}

} // namespace

char* encodeUtf8(char32_t character, char* target) {
    return utf8::unchecked::append(character, target);
}

namespace detail {

std::u16string utf8ToUtf16(std::string_view utf8) {
    std::u16string result;
    appendUtf16(result, utf8);
    return result;
}

std::string utf16ToUtf8(std::u16string_view utf16) {
    std::string result;
    appendUtf8(result, utf16);
    return result;
}

void appendUtf16(std::u16string& target, std::string_view utf8) {
    const std::size_t old = target.size();
    // A byte never becomes more than one unit.
    target.resize_and_overwrite(old + utf8.size(), [&](char16_t* begin, std::size_t) {
        return toUtf16(utf8.data(), utf8.data() + utf8.size(), begin + old) - begin;
    });
}

void appendUtf8(std::string& target, std::u16string_view utf16) {
    const char16_t* text = utf16.data();
    const char16_t* const end = text + utf16.size();
    std::size_t old = target.size();
    target.resize_and_overwrite(old + utf16.size(), [&](char* begin, std::size_t) {
        char* copied = begin + old;
        copyAscii(text, end, copied);
        return copied - begin;
    });
    if (text == end)
        return;
    old = target.size();
    // A unit never becomes more than three bytes: a pair becomes four.
    target.resize_and_overwrite(
        old + 3 * static_cast<std::size_t>(end - text),
        [&](char* begin, std::size_t) { return toUtf8(text, end, begin + old) - begin; });
}

std::size_t validUtf8Prefix(std::string_view bytes) {
    const char* end = bytes.data() + bytes.size();
    return static_cast<std::size_t>(skipValid(bytes.data(), end) - bytes.data());
}

std::string replaceMalformedUtf8(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size());
    const char* text = bytes.data();
    const char* const end = text + bytes.size();
    for (;;) {
        const char* valid = skipValid(text, end);
        result.append(text, valid);
        if (valid == end)
            return result;
        char replacement[4];
        result.append(replacement, encodeUtf8(kReplacement, replacement));
        text = skipMalformed(valid, end);
    }
}

} // namespace detail

} // namespace corvane::utils::string
