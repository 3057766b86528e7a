#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/string/CopyText.hpp>

#include <cstddef>
#include <string_view>

namespace corvane::utils::io {

/// A buffered sink of bytes.
///
/// A derived stream lends its buffer to the base class, [`cursor_`, `end_`), and is asked for more
/// when it is full. Failures are thrown by the operation that met them.
class CORVANE_EXPORT OutputStream {
public:
    /// The most bytes that `reserve` may be asked for.
    static constexpr std::size_t kMaxReserve = 4096;

    OutputStream(const OutputStream&) = delete;
    OutputStream& operator=(const OutputStream&) = delete;
    virtual ~OutputStream();

    /// Writes all of `bytes`, or throws what the sink's failure throws; how much of them it took
    /// then is not known.
    void write(std::string_view bytes) {
        if (bytes.size() > room()) {
            writeBlock(bytes);
            return;
        }
        cursor_ = string::copyText(cursor_, bytes);
    }

    /// The same for one byte.
    void put(char byte) {
        if (cursor_ == end_)
            overflow();
        *cursor_++ = byte;
    }

    /// At least `size` (at most `kMaxReserve`) contiguous bytes to write into; what was really
    /// written becomes part of the output through `commit`. Nothing else may be written between.
    ///
    ///     char* const begin = stream.reserve(text.size() + 1);
    ///     char* const end = string::copyText(begin, text);
    ///     *end = ';';
    ///     stream.commit(end + 1);
    [[nodiscard]] char* reserve(std::size_t size) {
        while (size > room())
            overflow();
        return cursor_;
    }
    void commit(char* end) { cursor_ = end; }

    /// Hands everything that is buffered to the sink. Nobody does it for the caller: a stream that
    /// is destroyed drops what it still holds.
    virtual void flush();

    /// What the stream writes to, for messages. Valid as long as the stream.
    [[nodiscard]] virtual std::string_view description() const = 0;

protected:
    OutputStream() = default;

    /// Makes room for at least one byte more than there is; asked repeatedly, for `kMaxReserve`
    /// contiguous bytes.
    virtual void overflow() = 0;

    /// Writes a block that does not fit into the buffer.
    virtual void writeBlock(std::string_view bytes) = 0;

    /// How many bytes the buffer still takes.
    [[nodiscard]] std::size_t room() const { return static_cast<std::size_t>(end_ - cursor_); }

    char* cursor_ = nullptr;
    char* end_ = nullptr;
};

} // namespace corvane::utils::io
