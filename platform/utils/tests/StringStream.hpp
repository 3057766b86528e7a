#pragma once

#include <corvane/utils/io/OutputStream.hpp>

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::utils::test {

/// Collects what is written. Its buffer begins empty and grows with demand, so that a test meets
/// every way into a full buffer.
class StringStream final : public io::OutputStream {
public:
    StringStream() { cursor_ = end_ = buffer_.data(); }

    [[nodiscard]] std::string text() const {
        return buffer_.substr(0, static_cast<std::size_t>(cursor_ - buffer_.data()));
    }
    [[nodiscard]] std::string_view description() const override { return "string"; }

protected:
    void overflow() override { grow(buffer_.size() * 2 + 1); }
    void writeBlock(std::string_view bytes) override {
        grow(buffer_.size() + bytes.size());
        write(bytes);
    }

private:
    void grow(std::size_t size) {
        const auto used = static_cast<std::size_t>(cursor_ - buffer_.data());
        buffer_.resize(size);
        cursor_ = buffer_.data() + used;
        end_ = buffer_.data() + size;
    }

    std::string buffer_;
};

} // namespace corvane::utils::test
