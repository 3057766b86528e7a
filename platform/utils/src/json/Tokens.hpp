#pragma once

#include "Source.hpp"

#include <cstdint>
#include <memory>
#include <span>

namespace corvane::utils::json::decoder::detail {

/// The offsets of all tokens of a text: brackets, commas, colons, and the first byte of each
/// string, number and word. There is at least one.
class Tokens {
public:
    /// Throws DecodeError when the text is not UTF-8, holds nothing but blanks, or has a string
    /// that is not closed or holds a control character.
    explicit Tokens(const Source& source);
    ~Tokens();

    [[nodiscard]] std::span<const std::uint32_t> offsets() const { return offsets_; }

private:
    struct Parser;
    std::unique_ptr<Parser> parser_; // owns the offsets
    std::span<const std::uint32_t> offsets_;
};

} // namespace corvane::utils::json::decoder::detail
