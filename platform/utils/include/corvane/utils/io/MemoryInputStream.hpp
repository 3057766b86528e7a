#pragma once

#include <corvane/utils/io/InputStream.hpp>

#include <string_view>

namespace corvane::utils::io {

/// Reads bytes that somebody else keeps: they must outlive the stream. They are its buffer, so
/// nothing is copied, and no operation of it can fail but `readElement` at the end. `bufferEnd` is
/// the end of the input from the beginning on.
class CORVANE_EXPORT MemoryInputStream final : public InputStream {
public:
    /// Begins at the first of `bytes`, which may be none.
    explicit MemoryInputStream(std::string_view bytes) : bytes_(bytes) { rewind(); }

    void rewind() override { setFirstBuffer(bytes_.data(), bytes_.data() + bytes_.size()); }

protected:
    bool refill() override { return false; }

private:
    std::string_view bytes_;
};

} // namespace corvane::utils::io
