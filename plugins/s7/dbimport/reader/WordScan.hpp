#pragma once

#include "dbimport/reader/Delimiters.hpp"

#include <corvane/utils/string/Ascii.hpp>
#include <corvane/utils/string/CopyText.hpp>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

/// A look at sixteen bytes of a file at once. Words are short, and so most of them end within one
/// look, whatever their length: no loop whose end a processor would have to guess.
namespace corvane::workbench::plugins::s7Driver::scan {

inline constexpr std::size_t kBlockSize = 16;

using Block [[gnu::vector_size(kBlockSize)]] = unsigned char;

/// All bits of a byte are set where a test holds.
using Mask [[gnu::vector_size(kBlockSize)]] = signed char;

/// Whether [text, end) has sixteen bytes.
inline bool hasBlock(const char* text, const char* end) {
    return end - text >= static_cast<std::ptrdiff_t>(kBlockSize);
}

/// The sixteen bytes at `text`, all of which can be read, as everywhere here.
inline Block load(const char* text) {
    Block block;
    std::memcpy(&block, text, kBlockSize);
    return block;
}

inline Mask isByte(Block block, char byte) { return block == static_cast<unsigned char>(byte); }

/// The bytes that lie in [first, last].
inline Mask isBetween(Block block, char first, char last) {
    return block - static_cast<unsigned char>(first) <= static_cast<unsigned char>(last - first);
}

/// Letters, digits and underscores. A name of these alone needs no quotes in a .db file and no
/// escape in a document.
inline Mask isPlain(Block block) {
    return isBetween(block | utils::string::ascii::kCaseBit, 'a', 'z') |
           isBetween(block, '0', '9') | isByte(block, '_');
}

/// The bytes that are one of `bytes`, of which there are few, known to the compiler.
inline Mask isOneOf(Block block, std::string_view bytes) {
    Mask mask{};
    for (const char byte : bytes)
        mask |= isByte(block, byte);
    return mask;
}

inline Mask isBlank(Block block) { return isOneOf(block, Delimiters::kBlanks); }

/// What an initial value may consist of: all but word stops, a quote and the semicolon.
inline Mask isValue(Block block) {
    return ~(isBlank(block) | isOneOf(block, Delimiters::kCommentBegins) | isOneOf(block, "';"));
}

inline Mask isLineEnding(Block block) { return isOneOf(block, "\n\r"); }

/// One bit per byte of the mask, the first byte's the lowest.
inline unsigned bitsOf(Mask mask) {
#if defined(__SSE2__)
    using Bytes [[gnu::vector_size(kBlockSize)]] = char;
    return static_cast<unsigned>(__builtin_ia32_pmovmskb128(std::bit_cast<Bytes>(mask)));
#else
    unsigned bits = 0;
    for (std::size_t byte = 0; byte != kBlockSize; ++byte)
        bits |= static_cast<unsigned>(mask[byte] != 0) << byte;
    return bits;
#endif
}

/// How many bytes from the first one on the test holds for.
inline std::size_t leading(Mask mask) {
    return static_cast<std::size_t>(std::countr_one(bitsOf(mask)));
}

/// How far `lineSize` looks.
inline constexpr std::size_t kLineSize = 4 * kBlockSize;

/// How many bytes at `text` stand in front of the line's end; `kLineSize` where that is further
/// away. So many bytes can be read.
inline std::size_t lineSize(const char* text) {
    std::uint64_t ends = 0;
    for (std::size_t begin = 0; begin != kLineSize; begin += kBlockSize)
        ends |= std::uint64_t{bitsOf(isLineEnding(load(text + begin)))} << begin;
    return static_cast<std::size_t>(std::countr_zero(ends));
}

/// Behind the bytes at `text` for which `test` holds. The last bytes of [text, end), less than a
/// block, are left to `rest`.
template <class Test, class Rest>
inline const char* behind(const char* text, const char* end, const Test& test, const Rest& rest) {
    while (hasBlock(text, end)) {
        const std::size_t count = leading(test(load(text)));
        text += count;
        if (count != kBlockSize)
            return text;
    }
    return rest(text, end);
}

/// The same, where the last bytes need not be looked at.
template <class Test>
inline const char* behind(const char* text, const char* end, const Test& test) {
    return behind(text, end, test, [](const char* at, const char*) { return at; });
}

/// Copies a text to where there is room for it; of a short one the whole block in which it begins,
/// which can be read and written. Returns the end of the copy.
[[nodiscard]] inline char* copyShort(char* target, std::string_view text) {
    if (text.size() > kBlockSize)
        return utils::string::copyText(target, text);
    std::memcpy(target, text.data(), kBlockSize);
    return target + text.size();
}

/// Copies the first `size` of the sixteen bytes at `text`, with the letters A to Z among them
/// folded, and zeros behind them: sixteen bytes in all.
inline void copyFolded(const char* text, std::size_t size, char* target) {
    constexpr Block kPlaces{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15};
    Block block = load(text);
    block += std::bit_cast<Block>(isBetween(block, 'A', 'Z')) & utils::string::ascii::kCaseBit;
    block &= std::bit_cast<Block>(kPlaces < static_cast<unsigned char>(size));
    std::memcpy(target, &block, kBlockSize);
}

} // namespace corvane::workbench::plugins::s7Driver::scan
