#pragma once

#include <corvane/utils/io/OutputStream.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// Writes into a text in memory: the write buffer is the free tail of the string itself, so that a
/// finished document is taken out without a copy.
class StringOutputStream final : public utils::io::OutputStream {
public:
    /// A text that would grow beyond `maximumSize` bytes makes the writing operation throw
    /// std::length_error "string data size exceeds representable size".
    explicit StringOutputStream(std::size_t maximumSize = std::string().max_size())
        : maximumSize_(maximumSize) {}

    /// Makes room for a text of about `size` bytes in one go, for who knows what will come. Only to
    /// be called while the stream is empty.
    void reserveRoom(std::size_t size);

    /// Takes what was written and leaves the stream empty.
    [[nodiscard]] std::string take();

    /// The bytes written so far.
    [[nodiscard]] std::size_t size() const { return text_.size() - room(); }

    [[nodiscard]] std::string_view description() const override;

protected:
    void overflow() override;
    void writeBlock(std::string_view bytes) override;

private:
    void useTailFrom(std::size_t position);

    std::string text_;
    std::size_t maximumSize_;
};

} // namespace corvane::workbench::plugins::s7Driver
