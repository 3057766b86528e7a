#include "DocumentListing.hpp"
#include "ImportTesting.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// What an import that succeeds has to say, and of which place.

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::shown;
using testing::takeMark;

constexpr std::string_view kHidden = " { ExternalAccessible := 'False' } ";

/// A data block with what stands between its name and its values.
std::string blockOf(std::string_view name, std::string_view lines) {
    return std::string("DATA_BLOCK ")
        .append(name)
        .append("\n{ S7_Optimized_Access := 'FALSE' }\n")
        .append(lines)
        .append("\nBEGIN\nEND_DATA_BLOCK\n");
}

/// A data block of these members.
std::string block(std::string_view name, std::string_view members) {
    return blockOf(name, std::string("STRUCT\n").append(members).append("\nEND_STRUCT;"));
}

/// A data block whose variables stand elsewhere, in a VAR section or in a type.
std::string bodiless(std::string_view name, std::string_view declarations) {
    return blockOf(name, std::string("VERSION : 0.1\n").append(declarations));
}

std::string utf8(std::u16string_view text) { return utils::string::detail::utf16ToUtf8(text); }

/// "LINE:COLUMN ELEMENT: TEXT", where there is a place and an element.
std::string shown(const ui::ImportWarning& warning) {
    std::string text;
    if (warning.line && warning.column)
        text += shown(SourcePlace{*warning.line, *warning.column}) + " ";
    if (!warning.element.empty())
        text += warning.element + ": ";
    return text + utf8(warning.text);
}

using Lines = std::vector<std::string>;

Lines shown(const std::vector<ui::ImportWarning>& warnings) {
    Lines lines;
    lines.reserve(warnings.size());
    for (const ui::ImportWarning& warning : warnings)
        lines.push_back(shown(warning));
    return lines;
}

Lines warningsOf(std::string_view source) { return shown(testing::import(source).warnings); }

/// A file with one warning. Its "@" is no part of it: it stands in front of what the warning is
/// about.
struct Case {
    std::string source;
    std::string warning; ///< behind the place
};

Case members(std::string_view declarations, std::string warning) {
    return {block("DB1", declarations), std::move(warning)};
}

std::string hidden(std::string_view variable, std::string_view moved) {
    return std::string("DB1: \u201C")
        .append(variable)
        .append("\u201D is hidden (ExternalAccessible is False) and takes no memory in the import: "
                "from \u201C")
        .append(moved)
        .append("\u201D on, the addresses are not those in the PLC");
}

/// `pattern` with each "%" replaced by the text of kHidden.
std::string withHidden(std::string_view pattern) {
    std::string text;
    for (const char character : pattern)
        if (character == '%')
            text.append(kHidden);
        else
            text.push_back(character);
    return text;
}

std::vector<Case> hiddenCases() {
    const auto file = [](std::string_view pattern, std::string_view variable,
                         std::string_view moved) {
        return members(withHidden(pattern), hidden(variable, moved));
    };
    return {
        file("a : Int;\n  @h%: Int;\nb : Int;", "h", "b"),
        file("@\"my h\"%: Int;\nb : Int;", "my h", "b"),
        file("a : Bool; h%: Bool; b : Int; @k%: Byte; c : Bool; d : Int;", "k", "c"),
        file("a : Bool; @h%: Bool; k%: Bool; b : Bool;", "h", "b"),
        file("@h%: DTL; b : Bool;", "h", "b"),
        file("@h%: Struct x : Int; END_STRUCT; s : Struct b : Bool; END_STRUCT;", "h", "b"),
        file("s : Struct a : Int; @h%: String[3]; END_STRUCT; b : Bool;", "h", "b"),
        file("s : Array[0..1] of Struct\na : Int;\n@h%: Int; END_STRUCT;", "h", "a"),
        file("e : Array[1..0] of Struct k : Struct h%: Int; x : Int; END_STRUCT; "
             "y : Array[0..1] of Struct z : Int; END_STRUCT; END_STRUCT;\n"
             " @h%: Int; b : Int;",
             "h", "b"),
        file("s : Array[0..2] of Struct t : Array[0..1] of Struct x : Bool; END_STRUCT; "
             "@h%: Bool; END_STRUCT; b : Int;",
             "h", "x"),
        file("@h%: Array[0..2147483646, 0..2147483646, 0..2147483646] of Byte; b : Byte;", "h",
             "b"),
        file("@h%: Array[0..8] of Bool; b : Array[0..1] of Byte; c : Word;", "h", "b"),
        file("@h%: Array[0..1, 0..1] of Struct x : LReal; END_STRUCT;b : Int;", "h", "b"),
        file("(* h%: Int; *) @h%: Int; (* \u00E4 *) b : Array[0..1] of Int;", "h", "b"),
    };
}

std::vector<Case> blockCases() {
    return {
        {block("@Data", "x : Int;"), "a block number is not in the file and was guessed: "
                                     "\u201CData\u201D got 1"},
        {block("@\"a b\"", "x : Int;") + block("DB7", "x : Int;") + block("c", "x : Int;"),
         "2 block numbers are not in the file and were guessed: \u201Ca b\u201D got 8, "
         "\u201Cc\u201D got 9"},
        {block("DB 1", "x : Int;") + block("@DB 70000", "x : Int;"),
         "a block number wrapped: \u201CDB70000\u201D got 4464; numbers end at 65535"},
        {block("DB1", "") + bodiless("@\"v\"", "VAR\n x : Int;\nEND_VAR"),
         "a data block brought nothing: \u201Cv\u201D (its variables stand in a VAR section, not "
         "in STRUCT)"},
        {bodiless("@v", "VAR RETAIN\n x : Int;\nEND_VAR") + block("DB1", "") +
             bodiless("i", "NON_RETAIN\n\"My FB\"") + bodiless("f", "FB 5") + bodiless("n", ""),
         "4 data blocks brought nothing: \u201Cv\u201D (its variables stand in a VAR section, not "
         "in STRUCT), \u201Ci\u201D (it is that of a function block or of a type), \u201Cf\u201D "
         "(it is that of a function block or of a type), \u201Cn\u201D (it declares no "
         "variables)"},
        {"// nothing\n", "the file brought no data block"},
        {"", "the file brought no data block"},
        {block("DB5", "x : Int;") + block("@DB6", "x : Array[0..65535] of Byte; y : Int;"),
         "DB6: this data block takes 65538 bytes: what lies behind byte 65535 has no valid "
         "address"},
        {block("@\"DB6\"", "x : Array[0..9999] of LReal; y : Int;") +
             block("DB7", "x : Array[0..9999] of LReal;"),
         "DB6: this data block takes 80002 bytes: what lies behind byte 65535 has no valid "
         "address; the first of 2 such data blocks"},
    };
}

std::vector<Case> variableCases() {
    return {
        members("a : Int;\n  @t : DTL;\nb : Int;",
                "a variable gave no item, since items do not have its type: 1 DTL"),
        {block("DB1", "s : Array[0..2] of Struct a : Int; @x : Array[0..1] of Date_And_Time; "
                      "END_STRUCT; t : S5Time;") +
             block("DB2", "t : S5Time; d : DTL;"),
         "9 variables gave no item, since items do not have their types: 2 S5Time, 6 "
         "Date_And_Time, 1 DTL"},
        {block("DB 1", "x : Int;") +
             block("\"DB2\"", "a : Int; \"b c\" { X := 'y' } : Real := 1.0; s : Struct\n\n"
                              "@\"t u\" : DTL; END_STRUCT;"),
         "a variable gave no item, since items do not have its type: 1 DTL"},
    };
}

std::vector<Case> allCases() {
    std::vector<Case> cases = hiddenCases();
    for (std::vector<Case> more : {blockCases(), variableCases()})
        std::ranges::move(more, std::back_inserter(cases));
    return cases;
}

/// Takes the mark out of the source and gives the warning with its place.
std::string expected(Case& one) {
    if (!one.source.contains('@'))
        return one.warning;
    const std::string place = shown(takeMark(one.source));
    return place + " " + one.warning;
}

TEST(ImportWarnings, SayWhatAndWhere) {
    for (Case one : allCases()) {
        const std::string warning = expected(one);
        EXPECT_EQ(warningsOf(one.source), Lines{warning}) << one.source;
    }
}

// In pieces of any size they are the same, and with a byte order mark.
TEST(ImportWarnings, DoNotDependOnWhatIsAtHand) {
    for (Case one : allCases()) {
        const std::string warning = expected(one);
        one.source.insert(0, "\xEF\xBB\xBF");
        testing::TrickleInputStream stream(one.source, 7);
        EXPECT_EQ(shown(makeImportDocument(testing::emptyPlc(), stream).warnings), Lines{warning})
            << one.source;
    }
}

TEST(ImportWarnings, OfAGoodFileThereAreNone) {
    for (const std::string_view pattern :
         {"a : Int;\nb : Bool;", "a : Int; h%: Int;", "a : Bool; h%: Bool; b : Int;",
          "h%: Int; t : Array[1..0] of DTL;",
          "s : Array[0..0] of Struct a : Int; h%: Int; END_STRUCT;",
          "a : Bool; h%: Struct END_STRUCT; b : Int;", "a : Int; h%: Struct x : DTL; END_STRUCT;",
          "x : Array[0..65535] of Byte;"})
        EXPECT_EQ(warningsOf(block("DB1", withHidden(pattern))), Lines{}) << pattern;
}

TEST(ImportWarnings, NumbersThatThePlcHasAreNotGuessed) {
    testing::PlcProject project;
    project.addDataBlock("Data", 17);
    const std::string source = block("Data", "x : Int;") + block("New", "x : Int;");
    EXPECT_EQ(shown(testing::import(source, project.plc()).warnings),
              Lines{"8:12 a block number is not in the file and was guessed: \u201CNew\u201D got "
                    "18"});
}

TEST(ImportWarnings, GuessedNumbersWrap) {
    testing::PlcProject project;
    project.addDataBlock("Old", 65534);
    const std::string source = block("a", "") + block("b", "") + block("c", "");
    EXPECT_EQ(shown(testing::import(source, project.plc()).warnings),
              (Lines{"8:12 2 block numbers wrapped: \u201Cb\u201D got 0, \u201Cc\u201D got 1; "
                     "numbers end at 65535",
                     "1:12 3 block numbers are not in the file and were guessed: \u201Ca\u201D got "
                     "65535, \u201Cb\u201D got 0, \u201Cc\u201D got 1"}));
}

// However many blocks and however long their names, the lines are few and short.
TEST(ImportWarnings, AreFewAndShort) {
    constexpr std::size_t kBlocks = 1000;
    const std::string longName(5000, 'x');
    std::string source;
    for (std::size_t index = 0; index < kBlocks; ++index) {
        const std::string name = std::to_string(index) + longName;
        source += block('"' + name + '"', name + std::string(kHidden) +
                                              ": Int;\nd : DTL; \"\xE4\" : Array[0..256] of "
                                              "String;") +
                  bodiless("v" + name, "VAR x : Int; END_VAR") +
                  block("DB" + std::to_string(70000 + index), "");
    }
    constexpr std::size_t kForeign = 10;
    const auto warnings = testing::import(source).warnings;
    ASSERT_EQ(warnings.size(), 6 + kForeign + 1);
    for (std::size_t index = 0; index < 6; ++index)
        EXPECT_LT(warnings[index].text.size(), 700U) << index;
    EXPECT_EQ(shown(warnings.back()), "names that are not UTF-8 were read as Windows-1252 in 990 "
                                      "further data blocks, too");
}

TEST(ImportWarnings, ALongNameIsCutBetweenCharacters) {
    const std::string prefix(58, 'x');
    const auto guessed = [](const std::string& name) {
        return "1:12 a block number is not in the file and was guessed: \u201C" + name +
               "\u201D got 1";
    };
    EXPECT_EQ(warningsOf(block('"' + prefix + "12\"", "")), Lines{guessed(prefix + "12")});
    EXPECT_EQ(warningsOf(block('"' + prefix + "123\"", "")), Lines{guessed(prefix + "12\u2026")});
    EXPECT_EQ(warningsOf(block('"' + prefix + "1\U0001F600\"", "")),
              Lines{guessed(prefix + "1\u2026")});
}

TEST(ImportWarnings, HiddenVariablesOfSeveralBlocksAreOneWarning) {
    const std::string source = block("DB1", "h : Int;") +
                               block("DB2", withHidden("a : Int;\nh%: Int;\nb : Int;")) +
                               block("DB3", withHidden("h%: Int;\nb : Int;"));
    EXPECT_EQ(warningsOf(source),
              Lines{"12:1 DB2: \u201Ch\u201D is hidden (ExternalAccessible is False) and takes no "
                    "memory in the import: from \u201Cb\u201D on, the addresses are not those in "
                    "the PLC; the first of 2 such data blocks"});
}

/// A file that is gone once it was read: it is rewound only at its beginning, to look for a byte
/// order mark.
class Once final : public utils::io::InputStream {
public:
    explicit Once(std::string bytes) : bytes_(std::move(bytes)) {}

    void rewind() override {
        if (isGone_)
            throw std::runtime_error("gone");
        isRead_ = false;
        setFirstBuffer(nullptr, nullptr);
    }

protected:
    bool refill() override {
        isGone_ = isRead_;
        setBuffer(bytes_.data(), bytes_.data() + (isRead_ ? 0 : bytes_.size()));
        return !std::exchange(isRead_, true);
    }

private:
    std::string bytes_;
    bool isRead_ = false;
    bool isGone_ = false;
};

TEST(ImportWarnings, OfAFileThatCannotBeReadTwiceHaveNoPlaces) {
    Once stream(block("Data", withHidden("h%: Int; b : Int;")) + bodiless("v", "VAR END_VAR"));
    EXPECT_EQ(
        shown(makeImportDocument(testing::emptyPlc(), stream).warnings),
        (Lines{"Data: \u201Ch\u201D is hidden (ExternalAccessible is False) and takes no memory in "
               "the import: from \u201Cb\u201D on, the addresses are not those in the PLC",
               "a block number is not in the file and was guessed: \u201CData\u201D got 1",
               "a data block brought nothing: \u201Cv\u201D (it declares no variables)"}));
}

/// Notes what is asked for while it lives.
class Translations {
public:
    Translations() {
        i18n::setTranslator([this](std::string_view, std::string_view text) {
            asked.emplace(text);
            return std::optional<std::u16string>();
        });
    }
    Translations(const Translations&) = delete;
    Translations& operator=(const Translations&) = delete;
    ~Translations() { i18n::setTranslator({}); }

    std::set<std::string, std::less<>> asked;
};

TEST(ImportWarnings, EveryTextIsTranslatedAndHasACase) {
    constexpr auto kTexts = std::to_array<std::string_view>({
#define S7_IMPORT_WARNING(name, text) text,
#include "dbimport/warnings/Warnings.def"
#undef S7_IMPORT_WARNING
    });
    const Translations translations;
    std::string wrapping;
    for (const int number : {70001, 70002})
        wrapping += block("DB" + std::to_string(number), "");
    for (int index = 0; index < 11; ++index)
        wrapping += block("\"\xE4" + std::to_string(index) + '"', "");
    static_cast<void>(testing::import(wrapping));
    for (Case one : allCases()) {
        static_cast<void>(expected(one));
        static_cast<void>(testing::import(one.source));
    }
    for (const std::string_view text : kTexts)
        EXPECT_TRUE(translations.asked.contains(text)) << text;
}

/// Members of data blocks, some of them hidden, the same for the same seed.
class HiddenMixture {
public:
    explicit HiddenMixture(std::uint32_t seed) : random_(seed) {}

    std::string members(int levels) {
        std::string text;
        for (std::size_t left = 1 + below(5); left > 0; --left) {
            text.append("v").append(std::to_string(count_++)).append(below(5) == 0 ? "%: " : " : ");
            if (below(3) == 0)
                text.append(pick(kArrays));
            text += levels > 0 && below(3) == 0 ? "Struct\n" + members(levels - 1) + "END_STRUCT;\n"
                                                : std::string(pick(kScalars)) + ";\n";
        }
        return text;
    }

private:
    static constexpr std::array<std::string_view, 9> kScalars = {
        "Bool", "Bool", "Byte", "Int", "Real", "LReal", "String[3]", "WString[2]", "DTL"};
    static constexpr std::array<std::string_view, 5> kArrays = {
        "Array[0..2] of ", "Array[1..0] of ", "Array[0..0] of ", "Array[0..1, 0..8] of ",
        "Array[-1..1, 0..0] of "};

    std::size_t below(std::size_t bound) { return random_() % bound; }

    template <std::size_t count>
    std::string_view pick(const std::array<std::string_view, count>& texts) {
        return texts[below(count)];
    }

    std::mt19937 random_;
    int count_ = 0;
};

std::string withoutMarks(std::string text) {
    std::erase(text, '%');
    return text;
}

/// The name of the first item that has another address where nothing is hidden; empty where all
/// have the same.
std::string firstMoved(const std::string& pattern) {
    const auto listing = [](const std::string& declarations) {
        return testing::Listing(testing::import(block("DB1", declarations)).text).lines();
    };
    const Lines inPlc = listing(withoutMarks(pattern));
    const auto pathOf = [](const std::string& line) { return line.substr(0, line.find(' ')); };
    auto next = inPlc.begin();
    for (const std::string& line : listing(withHidden(pattern))) {
        next = std::ranges::find(next, inPlc.end(), pathOf(line), pathOf);
        if (*next != line) {
            const std::string path = pathOf(line);
            const std::string name = path.substr(path.rfind('.') + 1);
            return name.substr(0, name.find('['));
        }
    }
    return {};
}

// What a second, slower layout would find, the warning says.
TEST(ImportWarnings, TellOfHiddenVariablesWhereAddressesDiffer) {
    std::size_t told = 0;
    for (std::uint32_t seed = 0; seed < 2000; ++seed) {
        const std::string pattern = HiddenMixture(seed).members(2);
        const std::string moved = firstMoved(pattern);
        const Lines lines = warningsOf(block("DB1", withHidden(pattern)));
        const bool isTold = !lines.empty() && lines.front().contains("is hidden");
        ASSERT_EQ(isTold, !moved.empty()) << pattern;
        if (!isTold)
            continue;
        ++told;
        ASSERT_TRUE(lines.front().contains("from \u201C" + moved + "\u201D on"))
            << lines.front() << "\n"
            << pattern;
    }
    EXPECT_GT(told, 500U);
    EXPECT_LT(told, 1500U);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
