#pragma once

#include <cstdint>

namespace corvane::workbench::plugins::s7Driver {

/// A place in the memory of a data block. Where the next variable goes, as it moves along.
struct MemoryPosition {
    static constexpr std::uint64_t kBitsPerByte = 8;

    std::uint64_t byteOffset = 0;
    std::uint64_t bitOffset = 0; ///< 0 to 7

    constexpr void advanceBits(std::uint64_t count) {
        const std::uint64_t bits = bitOffset + count;
        byteOffset += bits / kBitsPerByte;
        bitOffset = bits % kBitsPerByte;
    }

    constexpr void advanceBytes(std::uint64_t count) { byteOffset += count; }

    // Types come in no order that a processor could guess: so without a branch.
    constexpr void alignToByte() {
        byteOffset += static_cast<std::uint64_t>(bitOffset != 0);
        bitOffset = 0;
    }

    /// A word is two bytes.
    constexpr void alignToWord() {
        alignToByte();
        byteOffset += byteOffset % 2;
    }

    friend constexpr bool operator==(const MemoryPosition&, const MemoryPosition&) = default;
};

} // namespace corvane::workbench::plugins::s7Driver
