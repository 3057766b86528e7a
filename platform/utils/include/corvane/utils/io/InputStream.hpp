#pragma once

#include <corvane/utils/Export.hpp>

#include <cstdint>
#include <optional>

namespace corvane::utils::io {

/// A buffered source of bytes, read front to back.
///
/// The buffer is open to its reader: [`cursor`, `bufferEnd`) holds bytes that are read but not yet
/// consumed, so that a scanner runs over them with a plain pointer and says afterwards, through
/// `advanceTo`, how far it came. `ensureBuffer` and every operation that consumes may replace the
/// buffer; pointers into it do not survive them. So what crosses the end of a buffer is collected:
///
///     for (bool found = false; !found && stream.ensureBuffer();) {
///         const char* const end = string::findByte(stream.cursor(), stream.bufferEnd(), ';');
///         word.append(stream.cursor(), end);
///         found = end != stream.bufferEnd();
///         stream.advanceTo(end);
///     }
///
/// Failures of the source are thrown as std::system_error by whatever operation met them.
class CORVANE_EXPORT InputStream {
public:
    InputStream(const InputStream&) = delete;
    InputStream& operator=(const InputStream&) = delete;
    virtual ~InputStream();

    /// Makes at least one byte available in the buffer; false at the end of the input.
    [[nodiscard]] bool ensureBuffer() { return cursor_ != end_ || refill(); }

    /// The next byte to read, valid up to `bufferEnd`.
    [[nodiscard]] const char* cursor() const { return cursor_; }
    [[nodiscard]] const char* bufferEnd() const { return end_; }

    /// Consumes the buffered bytes up to `position`, which lies in [`cursor`, `bufferEnd`].
    void advanceTo(const char* position) { cursor_ = position; }

    /// The next byte without consuming it; empty at the end of the input.
    [[nodiscard]] std::optional<char> tryPeek() {
        return ensureBuffer() ? std::optional<char>(*cursor_) : std::nullopt;
    }

    /// Consumes one byte. Throws std::runtime_error "unexpected end of input" when there is none.
    char readElement() {
        if (!ensureBuffer())
            throwEndOfInput();
        return *cursor_++;
    }
    void skipElement() { static_cast<void>(readElement()); }

    /// Skips spaces, tabs, carriage returns and line feeds; true if there were any.
    bool skipWhitespace();

    /// Skips to the end of the current line; the line ending itself stays unread.
    void skipLine();

    /// Skips one line ending, "\n", "\r\n" or "\r", if one is next.
    void skipLineEnding();

    /// How many bytes of the input are consumed.
    [[nodiscard]] std::uint64_t position() const {
        return loaded_ - static_cast<std::uint64_t>(end_ - cursor_);
    }

    /// True when no byte is left.
    [[nodiscard]] bool eof() { return !ensureBuffer(); }

    /// Goes back to the first byte of the input.
    virtual void rewind() = 0;

protected:
    InputStream() = default;

    /// Called when every buffered byte is consumed: puts more into the buffer through `setBuffer`.
    /// False at the end of the input.
    virtual bool refill() = 0;

    void setBuffer(const char* begin, const char* end) {
        cursor_ = begin;
        end_ = end;
        loaded_ += static_cast<std::uint64_t>(end - begin);
    }

    /// The same for the first bytes of the input, to which it goes back; there may be none yet.
    void setFirstBuffer(const char* begin, const char* end) {
        loaded_ = 0;
        setBuffer(begin, end);
    }

private:
    [[noreturn]] static void throwEndOfInput();

    const char* cursor_ = nullptr;
    const char* end_ = nullptr;
    std::uint64_t loaded_ = 0; // bytes of the input up to `end_`
};

} // namespace corvane::utils::io
