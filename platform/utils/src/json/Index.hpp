#pragma once

#include "Source.hpp"

#include <cstdint>
#include <memory>

namespace corvane::utils::json::decoder::detail {

/// Where the names and values of a text stand, in document order, each a slot with its offset. An
/// array or object takes one more slot, which tells the slot behind its last entry: stepping over
/// a value costs the same whatever it holds.
///
///     text    { "a" : [ 1 , 2 ] , "b" : 3 }
///     slots   0 9 2 8 7 10 14 20 26
///
/// Here the 9 in slot 1 and the 7 in slot 4 are such slot numbers, the others are offsets.
///
/// simdjson finds the tokens and checks the encoding, some billions of bytes per second. Its own
/// reader over them is not used: it has one cursor for the whole document, steps over a value by
/// walking through it (for a tree of elements, once per level), and trusts the brackets of what it
/// steps over.
class Index {
public:
    /// Throws DecodeError; see decoder::Document.
    explicit Index(const Source& source);

    static constexpr std::uint32_t kRoot = 0;

    /// Where the name or value of that slot begins.
    [[nodiscard]] const char* textAt(std::uint32_t slot) const {
        return source_->begin() + slots_[slot];
    }

    /// The first slot inside the array or object at `slot`, and the one behind its last.
    [[nodiscard]] static std::uint32_t insideOf(std::uint32_t slot) { return slot + 2; }
    [[nodiscard]] std::uint32_t endOf(std::uint32_t slot) const { return slots_[slot + 1]; }

    /// The slot behind the value at `slot`.
    [[nodiscard]] std::uint32_t after(std::uint32_t slot) const {
        const char c = *textAt(slot);
        return c == '{' || c == '[' ? endOf(slot) : slot + 1;
    }

    /// The first token behind the outermost value, or the end of the text.
    [[nodiscard]] const char* trailingText() const { return trailing_; }

private:
    const Source* source_;
    std::unique_ptr<std::uint32_t[]> slots_;
    const char* trailing_ = nullptr;
};

} // namespace corvane::utils::json::decoder::detail
