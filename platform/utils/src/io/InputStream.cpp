#include <corvane/utils/io/InputStream.hpp>

#include <corvane/utils/string/FindByte.hpp>

#include <stdexcept>

namespace corvane::utils::io {

namespace {

constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

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
        cursor_ = string::findLineEnding(cursor_, end_);
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
