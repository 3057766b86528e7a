#include <corvane/utils/io/InputStream.hpp>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>

namespace corvane::utils::io {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// The first `byte` in [begin, end), or `end`.
const char* find(const char* begin, const char* end, char byte) {
    const void* found = std::memchr(begin, byte, static_cast<std::size_t>(end - begin));
    return found ? static_cast<const char*>(found) : end;
}

/// The first line feed or carriage return in [begin, end), or `end`. Goes in steps, since a text
/// with one kind of line ending would else be searched to its end for the other, line after line.
const char* findLineEnding(const char* begin, const char* end) {
    constexpr std::ptrdiff_t kStep = 256;
    while (begin != end) {
        const char* stepEnd = begin + std::min(kStep, end - begin);
        const char* found = find(begin, find(begin, stepEnd, '\n'), '\r');
        if (found != stepEnd)
            return found;
        begin = stepEnd;
    }
    return end;
}

} // namespace

InputStream::~InputStream() = default;

bool InputStream::skipWhitespace() {
    bool skipped = false;
    while (ensureBuffer()) {
        const char* position = cursor_;
        while (position != end_ && isBlank(*position))
            ++position;
        skipped |= position != cursor_;
        cursor_ = position;
        if (position != end_)
            break;
    }
    return skipped;
}

void InputStream::skipLine() {
    while (ensureBuffer()) {
        cursor_ = findLineEnding(cursor_, end_);
        if (cursor_ != end_)
            return;
    }
}

void InputStream::skipLineEnding() {
    const auto next = tryPeek();
    if (next != '\n' && next != '\r')
        return;
    ++cursor_;
    if (next == '\r' && tryPeek() == '\n')
        ++cursor_;
}

void InputStream::throwEndOfInput() { throw std::runtime_error("unexpected end of input"); }

} // namespace corvane::utils::io
