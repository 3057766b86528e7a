#pragma once

#include <corvane/utils/io/OutputStream.hpp>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::utils::io {

/// What a text in memory ends with that would grow beyond its largest size: told apart from a
/// length that somebody else found too large.
class CORVANE_EXPORT TextTooLongError final : public std::length_error {
public:
    TextTooLongError();
};

/// Writes into a text in memory: the write buffer is the free tail of the string itself, so that a
/// finished document is taken out without a copy. Bytes that are committed without having been
/// written are zero.
class CORVANE_EXPORT StringOutputStream final : public OutputStream {
public:
    /// A text that would grow beyond `maximumSize` bytes makes the writing operation throw
    /// TextTooLongError "string data size exceeds representable size". What was written before
    /// stays.
    explicit StringOutputStream(std::size_t maximumSize = std::string().max_size())
        : maximumSize_(maximumSize) {}

    /// Makes room for a text of `size` bytes in one go, for who knows about how much will come:
    /// growing step by step copies the text at each step. Throws std::bad_alloc, or
    /// std::length_error where no string can be that long; `maximumSize` does not matter here.
    void reserveRoom(std::size_t size);

    /// Takes what was written and leaves the stream empty.
    [[nodiscard]] std::string take();

    /// What was written, as long as nothing is written after it.
    [[nodiscard]] std::string_view view() const { return {text_.data(), size()}; }

    /// Forgets what was written and keeps the room, for who writes many texts one after the other.
    void clear();

    /// The bytes written so far.
    [[nodiscard]] std::size_t size() const { return text_.size() - room(); }

    /// "in-memory text string".
    [[nodiscard]] std::string_view description() const override;

protected:
    void overflow() override;
    void writeBlock(std::string_view bytes) override;

private:
    void useTailFrom(std::size_t position);

    std::string text_;
    std::size_t maximumSize_;
};

} // namespace corvane::utils::io
