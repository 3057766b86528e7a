#include "ImportTesting.hpp"

#include "dbimport/facts/FoldCase.hpp"
#include "dbimport/facts/Keywords.hpp"
#include "dbimport/facts/TypeTable.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {
namespace {

TEST(TypeTable, RowsAreThoseOfTheController) {
    struct Row {
        int code;
        std::string_view name;
        Alignment alignment;
        int size;
        int characterSize;
        bool producesItem;
    };
    using enum Alignment;
    constexpr std::array kExpected = {
        Row{1, "Bool", bit, 1, 0, true},
        Row{2, "Byte", byte, 1, 0, true},
        Row{3, "SInt", byte, 1, 0, true},
        Row{4, "USInt", byte, 1, 0, true},
        Row{5, "DInt", word, 4, 0, true},
        Row{6, "UDInt", word, 4, 0, true},
        Row{7, "Int", word, 2, 0, true},
        Row{8, "UInt", word, 2, 0, true},
        Row{9, "LInt", word, 8, 0, true},
        Row{10, "ULInt", word, 8, 0, true},
        Row{11, "Real", word, 4, 0, true},
        Row{12, "LReal", word, 8, 0, true},
        Row{13, "Word", word, 2, 0, true},
        Row{14, "DWord", word, 4, 0, true},
        Row{15, "LWord", word, 8, 0, true},
        Row{16, "String", word, 2, 1, true},
        Row{17, "WString", word, 4, 2, true},
        Row{18, "S5Time", word, 2, 0, false},
        Row{19, "Date_And_Time", word, 8, 0, false},
        Row{20, "DTL", word, 12, 0, false},
    };
    ASSERT_EQ(kTypes.size(), kExpected.size());
    for (std::size_t index = 0; index < kExpected.size(); ++index) {
        const Row& row = kExpected[index];
        const TypeFacts& facts = kTypes[index];
        SCOPED_TRACE(row.name);
        EXPECT_EQ(static_cast<int>(facts.type), row.code);
        EXPECT_EQ(typeName(facts.type), row.name);
        EXPECT_EQ(facts.alignment, row.alignment);
        EXPECT_EQ(facts.size, row.size);
        EXPECT_EQ(facts.characterSize, row.characterSize);
        EXPECT_EQ(facts.producesItem, row.producesItem);
    }
}

TEST(TypeTable, KeywordsNameTheirTypes) {
    struct Row {
        std::string_view keyword;
        std::string_view type;
    };
    constexpr std::array kExpected = {
        Row{"bool", "Bool"},         Row{"byte", "Byte"},
        Row{"sint", "SInt"},         Row{"usint", "USInt"},
        Row{"int", "Int"},           Row{"uint", "UInt"},
        Row{"dint", "DInt"},         Row{"udint", "UDInt"},
        Row{"lint", "LInt"},         Row{"ulint", "ULInt"},
        Row{"real", "Real"},         Row{"lreal", "LReal"},
        Row{"word", "Word"},         Row{"ldt", "ULInt"},
        Row{"dword", "DWord"},       Row{"lword", "LWord"},
        Row{"char", "USInt"},        Row{"wchar", "UInt"},
        Row{"string", "String"},     Row{"wstring", "WString"},
        Row{"s5time", "S5Time"},     Row{"time", "UDInt"},
        Row{"ltime", "ULInt"},       Row{"date", "UInt"},
        Row{"time_of_day", "UDInt"}, Row{"ltime_of_day", "ULInt"},
        Row{"dtl", "DTL"},           Row{"date_and_time", "Date_And_Time"},
    };
    ASSERT_EQ(kTypeKeywords.size(), kExpected.size());
    for (const Row& row : kExpected) {
        const TypeFacts* const facts = findType(row.keyword);
        ASSERT_NE(facts, nullptr) << row.keyword;
        EXPECT_EQ(facts->name, row.type);
    }
}

TEST(TypeTable, OtherWordsNameNone) {
    for (const std::string_view word :
         {"", "b", "Int", "INT", "int ", "in", "intt", "tod", "dt", "timer", "\"int\"", "struct",
          "array", "ldt_", "variant", "\xC3\xA4\xC3\xA4"})
        EXPECT_EQ(findType(word), nullptr) << word;
}

KeywordBlock blockOf(std::string_view word) {
    KeywordBlock block{};
    std::ranges::copy(word.substr(0, block.size()), block.begin());
    return block;
}

TEST(TypeTable, ABlockNamesWhatItsWordNames) {
    for (const TypeKeyword& row : kTypeKeywords) {
        const KeywordBlock block = blockOf(row.keyword);
        EXPECT_NE(findType(block, row.keyword.size()), nullptr) << row.keyword;
        EXPECT_EQ(findType(block, row.keyword.size()), findType(row.keyword)) << row.keyword;
        for (const std::size_t size : {std::size_t{0}, row.keyword.size() - 1,
                                       row.keyword.size() + 1, block.size(), block.size() + 1})
            EXPECT_EQ(findType(block, size), nullptr) << row.keyword << " as " << size;
    }
    EXPECT_EQ(findType(KeywordBlock(), 0), nullptr);
}

// A zero behind a keyword looks like the end of the keyword's block, and is none.
TEST(TypeTable, ZerosBehindAKeywordAreSeen) {
    constexpr std::size_t kMost = 24;
    for (const TypeKeyword& row : kTypeKeywords)
        for (std::size_t zeros = 1; zeros <= kMost; ++zeros) {
            const std::string word = std::string(row.keyword).append(zeros, '\0');
            EXPECT_EQ(findType(word), nullptr) << row.keyword << " and " << zeros << " zeros";
            EXPECT_EQ(findType(word + "x"), nullptr) << row.keyword << " and " << zeros << " zeros";
        }
    EXPECT_EQ(findType(std::string(16, '\0')), nullptr);
    EXPECT_EQ(findType(std::string("\0int", 4)), nullptr);
}

TEST(TypeTable, WordsAreSeenToTheirEnd) {
    constexpr std::size_t kMost = 40;
    for (const TypeKeyword& row : kTypeKeywords)
        for (std::size_t size = row.keyword.size() + 1; size <= kMost; ++size) {
            std::string word(row.keyword);
            word.resize(size, '_');
            EXPECT_EQ(findType(word), nullptr) << word;
        }
    for (const std::string_view word :
         {"date_and_time_of", "date_and_time_of_", "date_and_time_of_day", "ltime_of_day_more",
          "wstringwstringws", "wstringwstringwstring", "\xC3\xA4tring"})
        EXPECT_EQ(findType(word), nullptr) << word;
}

TEST(FoldCase, TheTargetIsTheFoldedWordWhateverItWas) {
    constexpr std::size_t kMost = 70;
    for (std::size_t size = 0; size <= kMost; ++size)
        for (std::size_t before = 0; before <= kMost; ++before) {
            std::string target(before, 'x');
            assignFolded(target, std::string(size, 'A'));
            EXPECT_EQ(target, std::string(size, 'a')) << size << " in place of " << before;
        }
    std::string target;
    assignFolded(target, "@AZ[`az{_09\xC3\x84");
    EXPECT_EQ(target, "@az[`az{_09\xC3\x84");
}

// Long words are compared eight letters at a time.
TEST(FoldCase, OnlyLettersAreEqualInEitherCase) {
    const std::string folded = "externalwritable_ok";
    for (std::size_t place = 0; place != folded.size(); ++place)
        for (int byte = 0; byte != 256; ++byte) {
            std::string word = folded;
            word[place] = static_cast<char>(byte);
            const char letter = folded[place];
            const bool sameLetter = letter >= 'a' && letter <= 'z' && byte == letter - 'a' + 'A';
            EXPECT_EQ(equalsFolded(word, folded), word[place] == letter || sameLetter)
                << place << ", byte " << byte;
        }
    EXPECT_TRUE(equalsFolded("EXTERNALWRITABLE_OK", folded));
    EXPECT_FALSE(equalsFolded("externalwritable_o", folded));
    EXPECT_FALSE(equalsFolded(folded + "k", folded));
}

TEST(Keywords, AreKnownInAnyCase) {
    for (const std::string_view word : {"data_block", "Struct", "BEGIN", "eND_dATA_bLOCK"})
        EXPECT_TRUE(isKeyword(word)) << word;
    EXPECT_EQ(keywordOf("End_Struct"), Keyword::endStruct);
    EXPECT_EQ(keywordOf("OF"), Keyword::of);
    EXPECT_EQ(keywordOf("aRRay"), Keyword::array);
}

TEST(Keywords, AHeaderMayBeGluedToItsName) {
    EXPECT_TRUE(isKeyword("DATA_BLOCK\"x\""));
    EXPECT_TRUE(isKeyword("data_block\""));
    EXPECT_FALSE(isKeyword("data_block'x'"));
    EXPECT_FALSE(isKeyword("data_blocks"));
    EXPECT_FALSE(isKeyword("struct\"x\""));
}

TEST(Keywords, OtherWordsAreFree) {
    for (const std::string_view word : {"", "end_struct", "array", "of", "string", "int", "structs",
                                        "data", "begin;", "b\303gin"})
        EXPECT_FALSE(isKeyword(word)) << word;
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
