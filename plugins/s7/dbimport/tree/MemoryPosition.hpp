#pragma once

#include "dbimport/facts/Messages.hpp"
#include "dbimport/facts/TypeTable.hpp"

#include <cstdint>
#include <string>

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

/// Where a variable lies, relative to its data block. No width letter stands in the text, since the
/// width follows from the data type.
struct RelativeAddress {
    MemoryPosition place;
    Alignment alignment = Alignment::byte; ///< the bit counts where it is a bit

    /// DB12, or DB0.3 for a bit.
    [[nodiscard]] std::string text() const;
};

/// Takes the memory of one variable of the type at `position`: aligns the position, moves it behind
/// the variable and returns where that lies. `textLength` counts for texts only, in characters.
/// Throws std::runtime_error for a type without a size.
inline RelativeAddress placeScalar(const TypeFacts& facts, std::uint64_t textLength,
                                   MemoryPosition& position) {
    if (facts.size == 0)
        fail(Message::unknownOffset, typeName(facts.type));
    if (facts.alignment == Alignment::bit) {
        const MemoryPosition place = position;
        position.advanceBits(facts.size);
        return {place, facts.alignment};
    }
    position.alignToByte();
    if (facts.alignment == Alignment::word)
        position.alignToWord();
    const MemoryPosition place = position;
    position.advanceBytes(facts.size + facts.characterSize * textLength);
    return {place, facts.alignment};
}

} // namespace corvane::workbench::plugins::s7Driver
