#include "ImportTesting.hpp"

#include "dbimport/parser/Decimal.hpp"
#include "dbimport/reader/DbFileReader.hpp"

#include <corvane/utils/io/MemoryInputStream.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::errorOf;

constexpr std::size_t kWhole = 0;

/// Each test runs over a stream with all bytes in one buffer and over some with a few at a time.
class DbFileReaderTest : public ::testing::TestWithParam<std::size_t> {
protected:
    DbFileReader& open(std::string_view text) {
        text_ = text;
        if (GetParam() == kWhole)
            stream_ = std::make_unique<utils::io::MemoryInputStream>(text_);
        else
            stream_ = std::make_unique<testing::TrickleInputStream>(text_, GetParam());
        reader_ = std::make_unique<DbFileReader>(*stream_);
        return *reader_;
    }

    /// What is left to be read.
    std::string rest() {
        std::string text;
        while (!reader_->atEnd())
            text.push_back(reader_->readChar());
        return text;
    }

private:
    std::string text_;
    std::unique_ptr<utils::io::InputStream> stream_;
    std::unique_ptr<DbFileReader> reader_;
};

INSTANTIATE_TEST_SUITE_P(Buffers, DbFileReaderTest, ::testing::Values(kWhole, 1, 7, 17, 64),
                         [](const auto& one) {
                             return one.param == kWhole ? "Whole"
                                                        : "Chunks" + std::to_string(one.param);
                         });

TEST_P(DbFileReaderTest, PassesOverAByteOrderMark) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"\xEF\xBB\xBF"
         "abc",
         "abc"},
        {"\xEF\xBB\xBF  // x\n abc", "abc"},
        {"abc", "abc"},
        {"\xEF\xBB"
         "abc",
         "\xEF\xBB"
         "abc"},
        {"\xEF\xBB", "\xEF\xBB"},
        {"a", "a"},
        {"", ""},
        {"  abc", "abc"},
        {"\xEF\xBB\xBF", ""},
    };
    for (const auto& [text, expected] : cases) {
        open(text).skipByteOrderMark();
        EXPECT_EQ(rest(), expected);
    }
}

TEST_P(DbFileReaderTest, SkipsBlanksAndComments) {
    struct Case {
        std::string_view text;
        bool skipped;
        std::string_view rest;
    };
    const std::vector<Case> cases = {
        {"", false, ""},
        {"x", false, "x"},
        {" \t\r\nx", true, "x"},
        {"// to the end\nx", true, "x"},
        {"// to the end\r\n  x", true, "x"},
        {"// to the end\rx", true, "x"},
        {"// no line ending", true, ""},
        {"//", true, ""},
        {"// a // b\n// c\n x", true, "x"},
        {"(* a *)x", true, "x"},
        {"(**)x", true, "x"},
        {"(***)x", true, "x"},
        {"(* a **)x", true, "x"},
        {"(* outer (* inner *) still comment *)x", true, "x"},
        {"(* a *) *)", true, "*)"},
        {"(* a ( b ) (c *) x", true, "x"},
        {"(* (*) *) *)x", true, "x"},
        {"(* // *) x", true, "x"},
        {"(* a *)\n// b\n(* c *) x", true, "x"},
        {"/x", false, "/x"},
        {" /x", true, "/x"},
        {"/", false, "/"},
        {"/* x */", false, "/* x */"},
        {"(x", false, "(x"},
        {"  (", true, "("},
        {"\v", false, "\v"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        EXPECT_EQ(open(one.text).skipBlanks(), one.skipped);
        EXPECT_EQ(rest(), one.rest);
    }
}

/// What follows blanks: short and long, with and without what looks like a comment's beginning.
constexpr std::array<std::string_view, 8> kBehindBlanks = {
    "", "x", "x and a good deal more text", "\v", "\xC2\xA0", "/x", "(x", "/ / and (so on",
};

/// Lengths on both sides of every number of bytes that may be looked at in one go.
constexpr std::size_t kLongest = 70;

/// `count` bytes of the pattern, over and over.
std::string repeated(std::string_view pattern, std::size_t count) {
    std::string text;
    while (text.size() < count)
        text.push_back(pattern[text.size() % pattern.size()]);
    return text;
}

TEST_P(DbFileReaderTest, SkipsAnyNumberOfBlanks) {
    // One kind each, then mixes of them.
    for (const std::string_view kinds :
         {" ", "\n", "\r", "\t", "\r\n", " \t", "\n\t  \r", "        \n"})
        for (std::size_t count = 0; count <= kLongest; ++count)
            for (const std::string_view behind : kBehindBlanks) {
                const std::string text = repeated(kinds, count).append(behind);
                SCOPED_TRACE(::testing::PrintToString(text));
                EXPECT_EQ(open(text).skipBlanks(), count > 0);
                EXPECT_EQ(rest(), behind);
                EXPECT_EQ(open(";" + text).readCharSkipBlanks(), ';');
                EXPECT_EQ(rest(), behind);
                EXPECT_EQ(open("\"q\"" + text).readQuoted('"'), "q");
                EXPECT_EQ(rest(), behind);
            }
}

TEST_P(DbFileReaderTest, SkipsLineCommentsOfAnyLength) {
    for (const std::string_view pattern : {"c", "/ (* ' \" *)", "\t\xC3\xA4 "})
        for (std::size_t size = 0; size <= kLongest; ++size)
            for (const std::string_view ending : {"\n", "\r\n", "\r", "\n \t", "\r\n// again\n"})
                for (const std::string_view behind : kBehindBlanks) {
                    const std::string line = repeated(pattern, size);
                    const std::string text =
                        std::string("//").append(line).append(ending) + std::string(behind);
                    SCOPED_TRACE(::testing::PrintToString(text));
                    EXPECT_TRUE(open(text).skipBlanks());
                    EXPECT_EQ(rest(), behind);
                    EXPECT_TRUE(open(repeated(" \n", size) + text).skipBlanks());
                    EXPECT_EQ(rest(), behind);
                    open(line + std::string(ending).append(behind)).skipRestOfLine();
                    EXPECT_EQ(rest(), behind);
                }
}

TEST_P(DbFileReaderTest, TheEndOfTheFileEndsALineComment) {
    for (const std::string_view pattern : {"c", "/ (* ' \" *)", "(*"})
        for (std::size_t size = 0; size <= kLongest; ++size)
            for (const std::string_view before : {"", " ", "// first\n"}) {
                const std::string text =
                    std::string(before).append("//").append(repeated(pattern, size));
                SCOPED_TRACE(text);
                EXPECT_TRUE(open(text).skipBlanks());
                EXPECT_EQ(rest(), "");
            }
}

TEST_P(DbFileReaderTest, SkipsBlockCommentsOfAnyLength) {
    for (const std::string_view pattern : {"c", "/ ( '\n", "\r\n\t "})
        for (std::size_t size = 0; size <= kLongest; ++size)
            for (const std::string_view behind : kBehindBlanks) {
                const std::string blanks = repeated(" \n", size);
                std::string text = blanks;
                text.append("(*").append(repeated(pattern, size)).append(".*)");
                text.append(blanks).append(behind);
                SCOPED_TRACE(::testing::PrintToString(text));
                EXPECT_TRUE(open(text).skipBlanks());
                EXPECT_EQ(rest(), behind);
            }
}

TEST_P(DbFileReaderTest, NestsCommentsAsDeepAsAFileLikes) {
    constexpr std::size_t kDepth = 1'000'000;
    std::string text;
    for (std::size_t level = 0; level < kDepth; ++level)
        text += "(*";
    std::string closed = text;
    for (std::size_t level = 0; level < kDepth; ++level)
        closed += "*)";
    EXPECT_TRUE(open(closed + "x").skipBlanks());
    EXPECT_EQ(rest(), "x");
    EXPECT_EQ(errorOf([&] { open(text).skipBlanks(); }), "Reached eof with open comment");
}

TEST_P(DbFileReaderTest, OpenCommentsFail) {
    for (const std::string_view text :
         {"(* never closed", "(*", "(* *", "(* (", "(* (* *)", "(*)", "  (* a (* b *)  "})
        EXPECT_EQ(errorOf([&] { open(text).skipBlanks(); }), "Reached eof with open comment")
            << text;
}

TEST_P(DbFileReaderTest, APushedBackCharacterMustBeReadAsAWord) {
    DbFileReader& reader = open("/ x");
    EXPECT_FALSE(reader.skipBlanks());
    EXPECT_EQ(reader.peekChar(), '/');
    EXPECT_FALSE(reader.atEnd());
    EXPECT_EQ(errorOf([&] { reader.skipBlanks(); }),
              "Syntax error: empty space or comment expected");
    EXPECT_EQ(reader.readWord(), "/");
    EXPECT_EQ(rest(), "x");
}

TEST_P(DbFileReaderTest, CharactersAreReadOneByOne) {
    DbFileReader& reader = open("a b");
    EXPECT_EQ(reader.peekChar(), 'a');
    EXPECT_EQ(reader.readChar(), 'a');
    EXPECT_EQ(reader.peekChar(), ' ');
    EXPECT_EQ(reader.readCharSkipBlanks(), ' ');
    EXPECT_EQ(reader.readCharSkipBlanks(), 'b');
    EXPECT_EQ(reader.peekChar(), std::nullopt);
    EXPECT_TRUE(reader.atEnd());
    EXPECT_EQ(errorOf([&] { reader.readChar(); }),
              "Reached the end of the file inside a declaration");
}

TEST_P(DbFileReaderTest, ReadCharSkipBlanksSkipsCommentsToo) {
    DbFileReader& reader = open("; // x\n (* y *) /z");
    EXPECT_EQ(reader.readCharSkipBlanks(), ';');
    EXPECT_EQ(reader.readChar(), '/');
    EXPECT_EQ(rest(), "z");
}

TEST_P(DbFileReaderTest, ReadsWords) {
    struct Case {
        std::string_view text;
        std::string_view word;
        std::string_view rest;
    };
    const std::vector<Case> cases = {
        {"", "", ""},
        {" x", "", "x"},
        {"word", "word", ""},
        {"word  next", "word", "next"},
        {"word\tnext", "word", "next"},
        {"word\rnext", "word", "next"},
        {"Int(5)", "Int(5)", ""},
        {"a/b c", "a/b", "c"},
        {"a//x", "a", ""},
        {"a//x\nb", "a", "b"},
        {"a(*x*)b", "a", "b"},
        {"4(0)", "4(0)", ""},
        {"a/", "a/", ""},
        {"a(", "a(", ""},
        {"a/(/(b", "a/(/(b", ""},
        {"/* x */", "/*", "x */"},
        {"a /b", "a", "/b"},
        {"a:b;c{d", "a:b;c{d", ""},
        {"\xC3\xA4\xFF\v\f x", "\xC3\xA4\xFF\v\f", "x"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        EXPECT_EQ(open(one.text).readWord(), one.word);
        EXPECT_EQ(rest(), one.rest);
    }
}

TEST_P(DbFileReaderTest, ReadsWordsUntilADelimiter) {
    static constexpr Delimiters kColon{":"};
    static constexpr Delimiters kSemicolonOrBracket{";["};
    struct Case {
        std::string_view text;
        const Delimiters* delimiters;
        std::string_view word;
        std::string_view rest;
    };
    const std::vector<Case> cases = {
        {"Name:Int", &kColon, "Name", ":Int"},
        {"Name :Int", &kColon, "Name", ":Int"},
        {":Int", &kColon, "", ":Int"},
        {"Name;Int", &kColon, "Name;Int", ""},
        {"a/b:c", &kColon, "a/b", ":c"},
        {"a/:c", &kColon, "a/", ":c"},
        {"a(*x*):c", &kColon, "a", ":c"},
        {"Name", &kColon, "Name", ""},
        {"Int[3];", &kSemicolonOrBracket, "Int", "[3];"},
        {"Int;", &kSemicolonOrBracket, "Int", ";"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        EXPECT_EQ(open(one.text).readWordUntil(*one.delimiters), one.word);
        EXPECT_EQ(rest(), one.rest);
    }
}

TEST_P(DbFileReaderTest, ReadsQuotedTexts) {
    EXPECT_EQ(open("\"my var (* x *)\"  : Int").readQuoted('"'), "my var (* x *)");
    EXPECT_EQ(rest(), ": Int");
    EXPECT_EQ(open("\"\"x").readQuoted('"'), "");
    EXPECT_EQ(rest(), "x");
    EXPECT_EQ(open("'a // b\nc' // d").readQuoted('\''), "a // b\nc");
    EXPECT_EQ(rest(), "");
    EXPECT_EQ(errorOf([&] { open("\"open").readQuoted('"'); }),
              "Reached the end of the file inside a declaration");
    EXPECT_EQ(errorOf([&] { open("\"").readQuoted('"'); }),
              "Reached the end of the file inside a declaration");
}

TEST_P(DbFileReaderTest, KeepsTheQuotesOfLiterals) {
    EXPECT_EQ(open("'a b'  ;").readQuotedKeepQuotes('\''), "'a b'");
    EXPECT_EQ(rest(), "  ;");
    EXPECT_EQ(open("''").readQuotedKeepQuotes('\''), "''");
    EXPECT_EQ(errorOf([&] { open("'open").readQuotedKeepQuotes('\''); }),
              "Reached the end of the file inside a declaration");
}

TEST_P(DbFileReaderTest, ReadsTheTextOfNumbers) {
    struct Case {
        std::string_view text;
        std::string_view number;
        std::string_view rest;
    };
    const std::vector<Case> cases = {
        {"-12 ..", "-12", ".."}, {"+5]", "+5", "]"}, {"x5", "x5", ""}, {"x5y", "x5", "y"},
        {"007 // x", "007", ""}, {"..", ".", "."},   {"", "", ""},     {"--5", "-", "-5"},
        {"12.5", "12", ".5"},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        EXPECT_EQ(open(one.text).readNumberText(), one.number);
        EXPECT_EQ(rest(), one.rest);
    }
}

TEST_P(DbFileReaderTest, ANumberTakesThePushedBackCharacter) {
    DbFileReader& reader = open("/5 x");
    EXPECT_FALSE(reader.skipBlanks());
    EXPECT_EQ(reader.readNumberText(), "/5");
    EXPECT_EQ(rest(), "x");
}

TEST_P(DbFileReaderTest, SkipsTheRestOfALine) {
    for (const std::string_view text :
         {"a b // c\n  x", "a\r\nx", "a\rx", "\nx", "a (* b\nx", "a\n(* b *) // c\n\tx"}) {
        open(text).skipRestOfLine();
        EXPECT_EQ(rest(), "x") << text;
    }
    DbFileReader& reader = open("/a\nx");
    EXPECT_FALSE(reader.skipBlanks());
    reader.skipRestOfLine();
    EXPECT_EQ(rest(), "x");
}

TEST(DecimalTest, ReadsAsTheStandardConversion) {
    for (const std::string text : {"0", "-0", "12", "+12", "-12", " \t\n\v\f\r7", "20x", "20 30",
                                   "007", "2147483647", "-2147483648", "1.9", "5-3"})
        EXPECT_EQ(readDecimal(text), std::stoi(text)) << text;
}

TEST(DecimalTest, RejectsAsTheStandardConversion) {
    for (const std::string_view text : {"", " ", "x", "-", "+", "+-5", "-+5", "--5", "'5'", ".5"}) {
        EXPECT_THROW(static_cast<void>(readDecimal(text)), std::invalid_argument) << text;
        EXPECT_EQ(errorOf([&] { static_cast<void>(readDecimal(text)); }), "invalid stoi argument");
    }
    for (const std::string_view text :
         {"2147483648", "-2147483649", "+99999999999999999999999999999999", " 4294967296x"}) {
        EXPECT_THROW(static_cast<void>(readDecimal(text)), std::out_of_range) << text;
        EXPECT_EQ(errorOf([&] { static_cast<void>(readDecimal(text)); }),
                  "stoi argument out of range");
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
