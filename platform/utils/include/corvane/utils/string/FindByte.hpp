#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

/// Searches in text that is given by its ends. No byte means anything but itself: zeros and bytes
/// of UTF-8 are looked for like any other. A byte below 0x80 stands in UTF-8 for itself only, so
/// what is found of those is never the inside of another character.
namespace corvane::utils::string {

/// The first `byte` in [begin, end), or `end`.
[[nodiscard]] inline const char* findByte(const char* begin, const char* end, char byte) {
    const void* const found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found != nullptr ? static_cast<const char*>(found) : end;
}

/// The first line feed or carriage return in [begin, end), or `end`. Goes in steps, since a text
/// with one kind of line ending would else be searched to its end for the other, line after line.
[[nodiscard]] inline const char* findLineEnding(const char* begin, const char* end) {
    constexpr std::ptrdiff_t kStep = 256;
    while (begin != end) {
        const char* const stepEnd = begin + std::min(kStep, end - begin);
        const char* const found = findByte(begin, findByte(begin, stepEnd, '\n'), '\r');
        if (found != stepEnd)
            return found;
        begin = stepEnd;
    }
    return end;
}

} // namespace corvane::utils::string
