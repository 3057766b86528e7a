#include "Scalar.hpp"

#include <corvane/utils/string/Ascii.hpp>
#include <corvane/utils/string/Word.hpp>

#include "../string/CodePoint.hpp"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace corvane::utils::json::decoder::detail {

namespace {

namespace word = string::word;
using string::ascii::isDigit;

/// The next quote or backslash. Strings close, so there is one.
const char* findSpecial(const char* text, const char* end) {
    for (; static_cast<std::size_t>(end - text) >= word::kSize; text += word::kSize) {
        const std::uint64_t bytes = word::load(text);
        if (const auto mask = word::equalTo(bytes, '"') | word::equalTo(bytes, '\\'))
            return text + word::firstOf(mask);
    }
    return std::find_if(text, end, [](char c) { return c == '"' || c == '\\'; });
}

/// The closing quote of the string that `text` stands in.
const char* findQuote(const char* text, const char* end) {
    for (;;) {
        text = findSpecial(text, end);
        if (*text == '"')
            return text;
        text += 2;
    }
}

/// The character of a one-letter escape.
constexpr std::optional<char> simpleEscape(char letter) {
    switch (letter) {
    case '"':
    case '\\':
    case '/':
        return letter;
    case 'b':
        return '\b';
    case 'f':
        return '\f';
    case 'n':
        return '\n';
    case 'r':
        return '\r';
    case 't':
        return '\t';
    default:
        return std::nullopt;
    }
}

/// Resolves the escapes of one string.
class Unescaper {
public:
    Unescaper(const Source& source, const char* begin, const char* end)
        : source_(source), at_(begin), end_(end) {}

    /// Writes the string to `target`, which has room for as many bytes as the raw text, and returns
    /// the end of what it wrote.
    char* run(char* target) {
        for (;;) {
            const char* escape = std::find(at_, end_, '\\');
            target = std::copy(at_, escape, target);
            if (escape == end_)
                return target;
            at_ = escape;
            target = resolve(target);
        }
    }

private:
    /// \n
    /// ^
    char* resolve(char* target) {
        if (at_[1] == 'u')
            return string::encodeUtf8(takeCharacter(), target);
        const auto character = simpleEscape(at_[1]);
        if (!character)
            source_.failMalformed("unknown escape in a string", at_);
        at_ += 2;
        *target++ = *character;
        return target;
    }

    /// \u00e9    \ud83d\ude00
    /// ^         ^
    char32_t takeCharacter() {
        const char* const begin = at_;
        const char32_t first = takeUnit();
        if (first < 0xd800 || first > 0xdfff)
            return first;
        if (first < 0xdc00 && end_ - at_ >= 2 && at_[0] == '\\' && at_[1] == 'u')
            if (const char32_t second = takeUnit(); second >= 0xdc00 && second <= 0xdfff)
                return 0x10000 + ((first - 0xd800) << 10) + (second - 0xdc00);
        source_.failMalformed("half of a surrogate pair in a string", begin);
    }

    char32_t takeUnit() {
        constexpr int kDigits = 4;
        std::uint32_t unit = 0;
        const char* const digits = at_ + 2;
        const char* const last = end_ - digits < kDigits ? end_ : digits + kDigits;
        const auto [stopped, error] = std::from_chars(digits, last, unit, 16);
        if (error != std::errc{} || stopped != digits + kDigits)
            source_.failMalformed("\\u in a string without four hexadecimal digits", at_);
        at_ = stopped;
        return unit;
    }

    const Source& source_;
    const char* at_;
    const char* end_;
};

/// Past the digits at `at`, of which there must be one.
const char* skipDigits(const char* at) {
    if (!isDigit(*at))
        return nullptr;
    while (isDigit(*at))
        ++at;
    return at;
}

/// The end of the longest number at `at`; nothing when it breaks off ("-", "1.", "1e").
const char* skipNumber(const char* at) {
    if (*at == '-')
        ++at;
    at = *at == '0' ? at + 1 : skipDigits(at);
    if (at && *at == '.')
        at = skipDigits(at + 1);
    if (at && (*at == 'e' || *at == 'E')) {
        ++at;
        if (*at == '+' || *at == '-')
            ++at;
        at = skipDigits(at);
    }
    return at;
}

/// Whether a number or word may end before `at`.
bool isBoundary(const Source& source, const char* at) {
    constexpr std::string_view kBoundaries = " \t\r\n,]}";
    return at == source.end() || kBoundaries.contains(*at);
}

} // namespace

std::string_view readString(const Source& source, const char* quote,
                            std::pmr::memory_resource& arena) {
    const char* const begin = quote + 1;
    const char* end = findSpecial(begin, source.end());
    if (*end == '"')
        return {begin, end};
    end = findQuote(end, source.end());
    const auto size = static_cast<std::size_t>(end - begin);
    char* const target = static_cast<char*>(arena.allocate(size, alignof(char)));
    return {target, Unescaper(source, begin, end).run(target)};
}

std::string_view readNumber(const Source& source, const char* begin) {
    const char* end = skipNumber(begin);
    if (!end || !isBoundary(source, end))
        source.failMalformed("not a number", begin);
    return {begin, end};
}

void expectWord(const Source& source, const char* begin, std::string_view word) {
    const auto left = static_cast<std::size_t>(source.end() - begin);
    const bool matches = std::string_view(begin, left).starts_with(word);
    if (!matches || !isBoundary(source, begin + word.size()))
        source.failMalformed("expected " + std::string(word), begin);
}

} // namespace corvane::utils::json::decoder::detail
