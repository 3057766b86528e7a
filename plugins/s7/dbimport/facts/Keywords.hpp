#pragma once

#include "dbimport/facts/FoldCase.hpp"

#include <array>
#include <cstddef>
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

/// For each first letter, as a byte of the file, the lengths of the keywords that begin with it:
/// bit n for n characters. With a quoted name behind it, a header's keyword is longer.
inline constexpr auto kKeywordLengths = [] {
    std::array<std::uint16_t, 256> lengths{};
    for (const KeywordText& row : kKeywords)
        for (unsigned letter = 0; letter != lengths.size(); ++letter)
            if (foldCase(static_cast<char>(letter)) == row.text.front())
                lengths[letter] |= static_cast<std::uint16_t>(row.keyword == Keyword::dataBlock
                                                                  ? ~0U << row.text.size()
                                                                  : 1U << row.text.size());
    return lengths;
}();

/// The attributes that are looked at; others are read and dropped. Lower case.
inline constexpr std::string_view kOptimizedAccessAttribute = "s7_optimized_access";
inline constexpr std::string_view kAccessibleAttribute = "externalaccessible";
inline constexpr std::string_view kWritableAttribute = "externalwritable";

/// Whether `keywordOf` a word of `size` characters that begins with `first` may be one. Every word
/// of a file is asked, and few may. `keywordOf` finds the same without this look (the Keywords
/// tests).
[[nodiscard]] constexpr bool mayBeKeyword(char first, std::size_t size) {
    constexpr std::size_t kLongest = 15;
    const unsigned lengths = kKeywordLengths[static_cast<unsigned char>(first)];
    return size > kLongest || (lengths >> size & 1U) != 0;
}

/// The keyword that `word` is, or none. A word that begins with "data_block" and a double quote is
/// a header whose quoted name follows without a blank, and so counts as that keyword.
[[nodiscard]] constexpr Keyword keywordOf(std::string_view word) {
    if (word.empty() || !mayBeKeyword(word.front(), word.size()))
        return Keyword::none;
    constexpr std::string_view kDataBlock = kKeywords.front().text;
    const bool glued = word.size() > kDataBlock.size() && word[kDataBlock.size()] == '"';
    if (glued)
        return equalsFolded(word.substr(0, kDataBlock.size()), kDataBlock) ? Keyword::dataBlock
                                                                           : Keyword::none;
    for (const KeywordText& row : kKeywords)
        if (equalsFolded(word, row.text))
            return row.keyword;
    return Keyword::none;
}

/// Whether `word` is a reserved keyword.
[[nodiscard]] constexpr bool isKeyword(std::string_view word) {
    const Keyword keyword = keywordOf(word);
    if (keyword == Keyword::none)
        return false;
    for (const KeywordText& row : kKeywords)
        if (row.keyword == keyword)
            return row.reserved;
    return false;
}

} // namespace corvane::workbench::plugins::s7Driver
