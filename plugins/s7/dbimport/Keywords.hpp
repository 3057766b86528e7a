#pragma once

#include "dbimport/FoldCase.hpp"

#include <array>
#include <cstdint>
#include <string_view>

/// The words with a meaning of their own in a .db file. They may be written in any case.
namespace corvane::workbench::plugins::s7Driver {

enum class Keyword : std::uint8_t {
    none,
    dataBlock,
    structure,
    begin,
    endDataBlock,
    endStruct,
    array,
    of,
};

struct KeywordText {
    Keyword keyword;
    std::string_view text; ///< lower case
    bool reserved;         ///< must not stand where a name or a value is expected
};

inline constexpr std::array kKeywords = {
    KeywordText{Keyword::dataBlock, "data_block", true},
    KeywordText{Keyword::structure, "struct", true},
    KeywordText{Keyword::begin, "begin", true},
    KeywordText{Keyword::endDataBlock, "end_data_block", true},
    KeywordText{Keyword::endStruct, "end_struct", false},
    KeywordText{Keyword::array, "array", false},
    KeywordText{Keyword::of, "of", false},
};

/// The letters with which keywords begin.
inline constexpr std::string_view kKeywordLetters = "abdeos";
static_assert(std::ranges::all_of(kKeywords, [](const KeywordText& row) {
    return kKeywordLetters.contains(row.text.front());
}));

/// The attributes that are looked at; others are read and dropped. Lower case.
inline constexpr std::string_view kOptimizedAccessAttribute = "s7_optimized_access";
inline constexpr std::string_view kAccessibleAttribute = "externalaccessible";
inline constexpr std::string_view kWritableAttribute = "externalwritable";

/// The keyword that `word` is, or none. A word that begins with "data_block" and a double quote is
/// a header whose quoted name follows without a blank, and so counts as that keyword.
[[nodiscard]] constexpr Keyword keywordOf(std::string_view word) {
    // Few words begin like a keyword, and every word of a file is asked.
    if (word.empty() || !kKeywordLetters.contains(foldCase(word.front())))
        return Keyword::none;
    for (const KeywordText& row : kKeywords)
        if (equalsFolded(word, row.text))
            return row.keyword;
    constexpr std::string_view kDataBlock = kKeywords.front().text;
    const bool glued = word.size() > kDataBlock.size() && word[kDataBlock.size()] == '"' &&
                       equalsFolded(word.substr(0, kDataBlock.size()), kDataBlock);
    return glued ? Keyword::dataBlock : Keyword::none;
}

/// Whether `word` is a reserved keyword.
[[nodiscard]] constexpr bool isKeyword(std::string_view word) {
    const Keyword keyword = keywordOf(word);
    for (const KeywordText& row : kKeywords)
        if (row.keyword == keyword)
            return row.reserved;
    return false;
}

} // namespace corvane::workbench::plugins::s7Driver
