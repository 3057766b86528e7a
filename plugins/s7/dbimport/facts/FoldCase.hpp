#pragma once

#include <corvane/utils/string/Ascii.hpp>
#include <corvane/utils/string/Word.hpp>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

/// Case folding of the file's words: the letters A to Z and no others.
namespace corvane::workbench::plugins::s7Driver {

using utils::string::ascii::foldCase;

/// The same for eight letters at once.
[[nodiscard]] constexpr std::uint64_t foldWord(std::uint64_t letters) {
    using utils::string::word::repeat;
    const std::uint64_t ascii = letters & repeat(0x7F);
    const std::uint64_t fromA = ascii + repeat(0x80 - 'A');
    const std::uint64_t behindZ = ascii + repeat(0x7F - 'Z');
    const std::uint64_t upper = (fromA ^ behindZ) & ~letters & repeat(0x80);
    return letters | upper >> 2U; // which is the bit that tells the cases apart
}

/// Whether `word` is `folded` when its case is folded. `folded` is lower case.
[[nodiscard]] constexpr bool equalsFolded(std::string_view word, std::string_view folded) {
    using utils::string::word::kSize;
    using utils::string::word::load;
    if (word.size() != folded.size())
        return false;
    std::size_t index = 0;
    if (!std::is_constant_evaluated())
        for (; word.size() - index >= kSize; index += kSize)
            if (foldWord(load(word.data() + index)) != load(folded.data() + index))
                return false;
    for (; index != word.size(); ++index)
        if (foldCase(word[index]) != folded[index])
            return false;
    return true;
}

/// Replaces `target` by the folded word.
inline void assignFolded(std::string& target, std::string_view word) {
    // The size that libstdc++ 12 hands to the operation may be larger than what was asked for.
    target.resize_and_overwrite(word.size(), [&](char* folded, std::size_t) {
        std::ranges::transform(word, folded, foldCase);
        return word.size();
    });
}

} // namespace corvane::workbench::plugins::s7Driver
