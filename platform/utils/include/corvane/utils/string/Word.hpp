#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// Eight bytes of text looked at at once. Each test returns a mask with bit 7 of a byte set where
/// that byte has the property; bytes behind the first hit may be marked wrongly, so that a mask
/// answers "any?" and "which is first?", and nothing else.
///
///     const auto hits = word::equalTo(word::load(text), ';');
///     return hits == 0 ? nullptr : text + word::firstOf(hits);
namespace corvane::utils::string::word {

inline constexpr std::size_t kSize = sizeof(std::uint64_t);

/// A word of eight such bytes.
constexpr std::uint64_t repeat(std::uint8_t byte) { return byte * 0x0101010101010101u; }

inline constexpr std::uint64_t kHighBits = repeat(0x80);

/// The eight bytes at `text`, all of which can be read; it need not be aligned. The first byte of
/// the text becomes the lowest of the word, on every machine.
inline std::uint64_t load(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, kSize);
    if constexpr (std::endian::native == std::endian::big)
        word = std::byteswap(word);
    return word;
}

/// The `size` bytes at `text`, which are fewer than a word's, with zeros behind them.
inline std::uint64_t loadShort(const char* text, std::size_t size) {
    constexpr std::size_t kHalf = kSize / 2;
    const auto byte = [text](std::size_t i) {
        return std::uint64_t{static_cast<std::uint8_t>(text[i])} << (8 * i);
    };
    if (size < kHalf) // the middle byte may be the first or the last one, too
        return size == 0 ? 0 : byte(0) | byte(size / 2) | byte(size - 1);
    // Two halves, which say the same of the bytes that both have.
    const auto half = [text](std::size_t begin) {
        std::uint32_t bytes = 0;
        std::memcpy(&bytes, text + begin, kHalf);
        if constexpr (std::endian::native == std::endian::big)
            bytes = std::byteswap(bytes);
        return std::uint64_t{bytes} << (8 * begin);
    };
    return half(0) | half(size - kHalf);
}

/// The bytes that are `byte`.
constexpr std::uint64_t equalTo(std::uint64_t word, char byte) {
    const std::uint64_t difference = word ^ repeat(static_cast<std::uint8_t>(byte));
    return (difference - repeat(1)) & ~difference & kHighBits;
}

/// The bytes below `limit`, which is at most 0x80.
constexpr std::uint64_t lessThan(std::uint64_t word, std::uint8_t limit) {
    return (word - repeat(limit)) & ~word & kHighBits;
}

/// The bytes beyond ASCII. Here no byte is marked wrongly.
constexpr std::uint64_t notAscii(std::uint64_t word) { return word & kHighBits; }

/// The bytes that continue a character of UTF-8. Here, too, no byte is marked wrongly.
constexpr std::uint64_t continuations(std::uint64_t word) {
    return word & ~(word << 1) & kHighBits;
}

/// Where the first marked byte stands; the mask must not be empty.
constexpr std::size_t firstOf(std::uint64_t mask) {
    return static_cast<std::size_t>(std::countr_zero(mask)) / 8;
}

/// How many bytes are marked; for masks in which none is marked wrongly.
constexpr std::size_t countOf(std::uint64_t mask) { return (mask >> 7) * repeat(1) >> 56; }

} // namespace corvane::utils::string::word
