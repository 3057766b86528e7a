#pragma once

#include <corvane/utils/io/OutputStream.hpp>

#include <array>
#include <string>

namespace corvane::workbench::core {

/// A sink that keeps what is written to it.
class StringOutputStream final : public utils::io::OutputStream {
public:
    StringOutputStream();

    /// Everything written so far; the stream is empty afterwards.
    [[nodiscard]] std::string take();

    void flush() override;
    [[nodiscard]] std::string_view description() const override { return "memory"; }

private:
    void overflow() override { flush(); }
    void writeBlock(std::string_view bytes) override;

    std::array<char, 2 * kMaxReserve> buffer_{};
    std::string text_;
};

} // namespace corvane::workbench::core
