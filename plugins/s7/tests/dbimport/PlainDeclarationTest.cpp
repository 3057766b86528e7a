#include "dbimport/parser/PlainDeclaration.hpp"

#include "DeclarationTable.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::kOtherCases;
using testing::kPlainCases;
using testing::OtherCase;
using testing::PlainCase;

/// With so many bytes behind it a declaration is seen to its end, whatever number of them is looked
/// at in one go.
constexpr std::size_t kEnough = 64;

/// Lengths on both sides of every number of bytes that may be looked at in one go.
constexpr std::size_t kLongest = 70;

/// What may follow a declaration, over and over.
constexpr std::array<std::string_view, 6> kBehind = {
    "\n  Next : Bool := TRUE;", " ", ";", "a", "'\"{}[]:=", "// (* \xC3\xA4\xFF\x80 / (",
};

std::string followedBy(std::string_view text, std::string_view pattern) {
    std::string all(text);
    while (all.size() < text.size() + kEnough + pattern.size())
        all += pattern;
    return all;
}

/// Reads from memory that holds `text` and nothing behind it.
std::optional<PlainDeclaration> readExactly(const std::vector<char>& text) {
    PlainDeclaration declaration;
    if (readPlainDeclaration(std::string_view(text.data(), text.size()), declaration))
        return declaration;
    return std::nullopt;
}

std::vector<char> bytesOf(std::string_view text) { return {text.begin(), text.end()}; }

bool isPlain(const std::string& text) { return readExactly(bytesOf(text)).has_value(); }

void check(const PlainDeclaration& read, const PlainCase& one) {
    EXPECT_EQ(read.name, one.name);
    EXPECT_EQ(read.type->type, one.type);
    EXPECT_EQ(read.access.externalAccessible, one.access.externalAccessible);
    EXPECT_EQ(read.access.externalWritable, one.access.externalWritable);
    EXPECT_EQ(read.elementCount, one.elementCount);
    EXPECT_EQ(read.size, one.text.size());
}

/// Every part of `text` from its beginning either yields the declaration that its case tells or
/// nothing, and nothing as long as the semicolon is missing.
void checkPrefixes(const PlainCase& one, std::string_view behind) {
    const std::string text = followedBy(one.text, behind);
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::vector<char> bytes = bytesOf(text.substr(0, size));
        const auto read = readExactly(bytes);
        SCOPED_TRACE(::testing::PrintToString(text.substr(0, size)));
        if (!read) {
            EXPECT_LT(size, one.text.size() + kEnough);
            continue;
        }
        EXPECT_GE(size, one.text.size());
        EXPECT_EQ(read->name.data(), bytes.data());
        check(*read, one);
    }
}

TEST(PlainDeclaration, IsReadAsItStandsOnceAllOfItIsThere) {
    for (const PlainCase& one : kPlainCases)
        for (const std::string_view behind : kBehind)
            checkPrefixes(one, behind);
}

// A longer name moves all that follows, so that each of its words comes to stand everywhere in what
// is looked at in one go.
TEST(PlainDeclaration, IsReadWhereverItsWordsStand) {
    for (const PlainCase& one : kPlainCases)
        for (std::size_t more = 1; more <= kLongest; ++more) {
            const std::string name = std::string(more, 'n').append(one.name);
            const std::string text = std::string(more, 'n').append(one.text);
            PlainCase moved = one;
            moved.name = name;
            moved.text = text;
            SCOPED_TRACE(::testing::PrintToString(text));
            const auto bytes = bytesOf(followedBy(text, "\n"));
            const auto read = readExactly(bytes);
            ASSERT_TRUE(read);
            check(*read, moved);
        }
}

TEST(PlainDeclaration, EverythingElseIsLeftToTheGrammar) {
    for (const OtherCase& one : kOtherCases)
        for (const std::string_view behind : kBehind) {
            // Without a semicolon of its own such a text would be completed by one behind it.
            if (one.why == "no semicolon" && behind.front() == ';')
                continue;
            EXPECT_FALSE(isPlain(followedBy(one.text, behind)))
                << one.why << ": " << ::testing::PrintToString(one.text) << " in front of "
                << ::testing::PrintToString(behind);
        }
}

// A result is used again and again: nothing of the declaration before stays in it.
TEST(PlainDeclaration, NothingOfTheLastOneStays) {
    const std::string first =
        "t { ExternalAccessible := 'False'; ExternalWritable := 'False'} : String[5];\n";
    const std::string second = followedBy("b : String;", "\nNext : Int;");
    PlainDeclaration declaration;
    ASSERT_TRUE(readPlainDeclaration(first + second, declaration));
    ASSERT_EQ(declaration.elementCount, 5);
    ASSERT_TRUE(readPlainDeclaration(second, declaration));
    EXPECT_EQ(declaration.name, "b");
    EXPECT_EQ(declaration.elementCount, std::nullopt);
    EXPECT_TRUE(declaration.access.externalAccessible);
    EXPECT_TRUE(declaration.access.externalWritable);
    EXPECT_EQ(declaration.size, std::string_view("b : String;").size());
}

TEST(PlainDeclaration, EveryTypeInAnyCase) {
    for (const TypeKeyword& row : kTypeKeywords) {
        std::string upper(row.keyword);
        std::ranges::transform(upper, upper.begin(), [](char letter) {
            return letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        });
        std::string mixed(row.keyword);
        mixed.front() = upper.front();
        mixed.back() = upper.back();
        for (const std::string& keyword : {std::string(row.keyword), upper, mixed}) {
            const auto bytes = bytesOf(followedBy("a : " + keyword + ";", " "));
            const auto read = readExactly(bytes);
            ASSERT_TRUE(read) << keyword;
            EXPECT_EQ(read->type->type, row.type) << keyword;
        }
    }
}

bool isOfAWord(char byte) {
    return (byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z') ||
           (byte >= '0' && byte <= '9') || byte == '_';
}

TEST(PlainDeclaration, NamesOfAnyLength) {
    for (std::size_t size = 1; size <= kLongest; ++size)
        for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{20}, size}) {
            const std::string name(size, 'n');
            const std::string blanks(count, ' ');
            std::string text = name;
            text.append(blanks).append("{").append(size, 'A').append(blanks).append(":='x'}");
            text.append(blanks).append(":Int").append(blanks).append(";");
            const auto bytes = bytesOf(followedBy(text, " "));
            const auto read = readExactly(bytes);
            ASSERT_TRUE(read) << text;
            EXPECT_EQ(read->name, name);
            EXPECT_EQ(read->size, text.size());
        }
}

// A word is looked at in blocks: each byte has its say at each place of each block.
TEST(PlainDeclaration, EveryByteAtEveryPlaceOfAName) {
    constexpr std::array<std::size_t, 15> kSizes = {1,  2,  7,  8,  9,  15, 16, 17,
                                                    31, 32, 33, 40, 63, 64, 65};
    for (const std::size_t size : kSizes)
        for (std::size_t place = 0; place < size; ++place)
            for (int value = 0; value <= std::numeric_limits<unsigned char>::max(); ++value) {
                const char byte = static_cast<char>(value);
                std::string name(size, 'n');
                name[place] = byte;
                const bool blankBehind = byte == ' ' && place > 0 && place + 1 == size;
                ASSERT_EQ(isPlain(followedBy(name + " : Int;", " ")),
                          isOfAWord(byte) || blankBehind)
                    << ::testing::PrintToString(name);
            }
}

TEST(PlainDeclaration, ValuesOfAnyLength) {
    struct Case {
        std::string_view before;
        std::string_view behind;
        bool plain;
    };
    constexpr std::array kCases = {
        Case{"a : Int := ", ";", true},        Case{"a : Int := '", "';", true},
        Case{"a { A := '", "'} : Int;", true}, Case{"a : Int := ", "/;", false},
        Case{"a : Int := ", "';", false},      Case{"a : Int := '", ";", false},
    };
    for (const Case& one : kCases)
        for (std::size_t size = 0; size <= kLongest; ++size) {
            const std::string text = std::string(one.before).append(size, '1').append(one.behind);
            EXPECT_EQ(isPlain(followedBy(text, " ")), one.plain) << text;
        }
}

TEST(PlainDeclaration, LengthsOfAnyNumberOfDigits) {
    constexpr std::size_t kMostDigits = 9;
    for (std::size_t digits = 0; digits <= kLongest; ++digits) {
        const auto bytes =
            bytesOf(followedBy("t : String[" + std::string(digits, '1') + "];", " "));
        const auto read = readExactly(bytes);
        ASSERT_EQ(read.has_value(), digits >= 1 && digits <= kMostDigits) << digits;
        if (read) {
            EXPECT_EQ(read->elementCount, std::stoull(std::string(digits, '1')));
        }
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
