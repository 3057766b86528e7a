#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

/// Case folding of the file's words: the letters A to Z and no others.
namespace corvane::workbench::plugins::s7Driver {

[[nodiscard]] constexpr char foldCase(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

/// Whether `word` is `folded` when its case is folded. `folded` is lower case.
[[nodiscard]] constexpr bool equalsFolded(std::string_view word, std::string_view folded) {
    return word.size() == folded.size() &&
           std::equal(word.begin(), word.end(), folded.begin(),
                      [](char letter, char lower) { return foldCase(letter) == lower; });
}

/// Replaces `target` by the folded word.
inline void assignFolded(std::string& target, std::string_view word) {
    target.resize_and_overwrite(word.size(), [&](char* folded, std::size_t size) {
        std::ranges::transform(word, folded, foldCase);
        return size;
    });
}

} // namespace corvane::workbench::plugins::s7Driver
