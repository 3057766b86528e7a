#include "ImportTesting.hpp"

#include "dbimport/diagnosis/SourcePlace.hpp"
#include "dbimport/facts/Messages.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

// Where in a file an import fails, and what it says of what helps.

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::shown;
using testing::takeMark;

/// A file that fails. Its "@" is no part of it: it stands in front of what is at fault. The hint is
/// how the expected one begins; empty where there is none.
struct Case {
    Message message;
    std::string source;
    std::string_view hint;
    ImportLimits limits;
};

Case file(Message message, std::string source, std::string_view hint = {}) {
    return {message, std::move(source), hint, {}};
}

Case members(Message message, std::string_view declarations, std::string_view hint = {}) {
    return {message, dataBlock(declarations), hint, {}};
}

/// A file with one data block whose header has these lines.
std::string header(std::string_view lines) {
    return std::string("DATA_BLOCK \"Motor\"\n").append(lines).append("\n");
}

constexpr std::string_view kStandardAccess = "{ S7_Optimized_Access := 'FALSE' }\n";

std::string nested(int levels) {
    std::string text;
    for (int level = 1; level < levels; ++level)
        text += "s : Struct\n";
    return text + "s : @Struct\n";
}

std::string dimensions(int count) {
    std::string text = "x : @Array[0..1";
    for (int index = 1; index < count; ++index)
        text += ", 0..1";
    return text + "] of Int;";
}

std::vector<Case> wordCases() {
    using enum Message;
    return {
        members(blankExpected, "x : Int @(5);"),
        file(commentOpenAtEnd, "// x\n  @(* never (* closed *)\n",
             "comments may stand in comments"),
        file(endInsideDeclaration, "DATA_BLOCK @\"x"),
        file(endInsideDeclaration, header("TITLE : @'x")),
        members(invalidNumber, "x : Array[@a..3] of Int;", "the value of a constant"),
        members(invalidNumber, "x : Array[0..@\"MAX\"] of Int;", "the value of a constant"),
        members(invalidNumber, "x : String[@\"MAX\"];", "the value of a constant"),
        members(invalidNumber, "x : Array[0..@-] of Int;"),
        members(numberOutOfRange, "x : Array[0..@2147483648] of Int;"),
        members(numberOutOfRange, "x : Array[@-2147483649..0] of Int;"),
        members(numberOutOfRange, "x : String[ @2147483648 ];"),
        file(numberOutOfRange, dataBlock("x : Int;") + "DATA_BLOCK @DB99999999999\n" +
                                   std::string(kStandardAccess) +
                                   "STRUCT\nEND_STRUCT\nBEGIN\n"
                                   "END_DATA_BLOCK\n"),
    };
}

std::vector<Case> headerCases() {
    using enum Message;
    return {
        file(missingDataBlock, "\n  @PROGRAM x"),
        file(missingDataBlock, "@TYPE \"t\" VERSION : 0.1", "user-defined types are not imported"),
        file(missingDataBlock, "@FUNCTION_BLOCK \"f\"", "only data blocks are imported"),
        file(missingDataBlock, dataBlock("") + "@FUNCTION \"f\" : Void",
             "only data blocks are imported"),
        file(missingDataBlock, "@\"x\""),
        file(keywordAsBlockName, "DATA_BLOCK @begin"),
        file(emptyBlockName, "DATA_BLOCK @\"\"\n"),
        file(emptyBlockName, "DATA_BLOCK@\n\n"),
        file(dbNumberExpected, "DATA_BLOCK DB @x"),
        file(duplicateBlockName, dataBlock("") + "DATA_BLOCK @\"Data\"\n"),
        file(duplicateBlockName, dataBlock("") + "DATA_BLOCK @Data\n"),
        file(optimizedAccess, header("{ S7_Optimized_Access := @'TRUE' }\n"),
             "the variables of this data block have no fixed addresses"),
        file(optimizedAccess, header("{ A := 'x'; S7_Optimized_Access := @TRUE; B := 'y' }\n"),
             "the variables of this data block have no fixed addresses"),
        file(optimizedAccess, header("@{ S7_m_c := 'true' }\n"), "the file does not say"),
        file(optimizedAccess, "DATA_BLOCK @DB 5\nSTRUCT\n", "the file does not say"),
        file(optimizedAccess, "DATA_BLOCK @\"Old\"\nTITLE = x\nAUTHOR : me\n  STRUCT\n",
             "the file does not say"),
        file(optimizedAccess,
             header("{ S7_Optimized_Access := @'TRUE' }\nVERSION : 0.1\nNON_RETAIN\n\"My FB\"\n"
                    "BEGIN\nEND_DATA_BLOCK\n"),
             "this is the data block of a function block"),
        file(optimizedAccess,
             header("{ S7_Optimized_Access := @'TRUE' }\nVAR\n x : Int;\nEND_VAR\nBEGIN\n"),
             "the variables of this data block have no fixed addresses"),
        file(optimizedAccess, "DATA_BLOCK @x\nAUTHOR :\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT",
             "\u201CAUTHOR :\u201D stands without a value"),
        file(headerLineWithoutWord, "DATA_BLOCK x @: 5"),
        file(headerLineWithoutWord, header("AUTHOR :\nFAMILY @: x"),
             "\u201CAUTHOR :\u201D stands without a value"),
        file(headerLineWithoutWord, header("VAR\n x : Int @:= 5;\nEND_VAR"),
             "variables in a VAR section are not imported"),
        file(nestedDataBlock, "DATA_BLOCK x\n@DATA_BLOCK y"),
        file(nestedDataBlock, "DATA_BLOCK x\nFB 5\n@DATA_BLOCK y", "this is the data block of a"),
        file(emptyHeaderWord, "DATA_BLOCK x@\n\n"),
        file(endOfFile, "DATA_BLOCK x VERSION : 0.1@\n \t\r\n"),
        file(emptyTarget, "DATA_BLOCK x BEGIN@\n"),
    };
}

std::vector<Case> declarationCases() {
    using enum Message;
    return {
        members(emptyVariableName, "x : Int; @: Int;"),
        file(emptyVariableName, header(kStandardAccess) + "STRUCT\n  x : Int; // last@\n\n"),
        file(keywordAsVariableName,
             header(kStandardAccess) + "STRUCT\nx : Int;\n@BEGIN\nEND_DATA_BLOCK",
             "an END_STRUCT; is missing"),
        members(endStructWithoutSemicolon, "x : Struct\n  y : Int;\n@END_STRUCT\nz : Int;"),
        members(emptyAttributeName, "x { @:= 'False' } : Int;"),
        members(assignmentExpected, "x { @a } : Int;"),
        members(assignmentExpected, "x { a @: 'False' } : Int;"),
        members(assignmentExpected, "x : Int @: 5;"),
        members(keywordInValue, "x : Int := @begin;"),
        file(endInsideValue, "DATA_BLOCK x BEGIN y := @5\n"),
        members(missingSeparator, "y : Int;\n @x Int;"),
        members(badArrayDeclaration, "x : Array[1..2] of @Array[1..2] of Int;",
                "write the bounds of all dimensions"),
        members(badArrayDeclaration, "x : Array[1..2] @off Int;"),
        members(badArraySyntax, "x : Array @of Int;"),
        members(badArraySyntax, "x : Array[0.@ .3] of Int;"),
        members(badArrayIndex, "x : Array[0..3@; of Int;"),
        members(badStringDeclaration, "x : String[@20;"),
        members(negativeStringLength, "x : String[@-1];"),
        members(semicolonExpected, "y : Int;\n@x : Int\nz : Int;"),
        members(semicolonExpected, "@x { A := 'b' } : Array[0..1] of Int[3];"),
        members(semicolonExpected, "@\"x y\" { A := 'b' } : \"my type\";",
                "user-defined types are not imported"),
        members(semicolonExpected, "@x : UDT 10;", "user-defined types are not imported"),
        file(keywordAsTarget, "DATA_BLOCK x BEGIN @BEGIN"),
        file(emptyTarget, "DATA_BLOCK x BEGIN y := 1; @:= 5;"),
        file(targetWithoutAssignment, "DATA_BLOCK x BEGIN\n  @Speed 5;"),
        file(targetWithoutAssignment, "DATA_BLOCK x BEGIN\n  @\"a b\".c 5;"),
    };
}

std::vector<Case> layoutCases() {
    using enum Message;
    return {
        members(unknownType, "y : Int;\nx : @Timer;", "this is none of the types"),
        members(unknownType, "x { A := 'b' } : @\"typ_Axis\";", "user-defined types are not"),
        members(unknownType, "x : Array[0..1] of @\"t\";", "user-defined types are not imported"),
        members(negativeArraySize, "x : @Array[3..1] of Int;"),
        members(structsTooDeep, nested(257)),
        members(tooManyDimensions, dimensions(65)),
        members(dimensionTooLarge, "x : @Array[-2147483648..2147483647] of Int;"),
        members(tooManyElements, "y : Int;\n@x : Array[0..2147483647] of S5Time;"),
        {tooManyElements,
         "DATA_BLOCK @a\n" + std::string(kStandardAccess) +
             "STRUCT x : Int; y : Int; END_STRUCT BEGIN END_DATA_BLOCK",
         "",
         {.elements = 2}},
        {documentTooLarge,
         "DATA_BLOCK a\n" + std::string(kStandardAccess) +
             "STRUCT END_STRUCT BEGIN END_DATA_BLOCK DATA_BLOCK @\"b\" " +
             std::string(kStandardAccess) + "STRUCT x : Int; END_STRUCT BEGIN END_DATA_BLOCK",
         "",
         {.documentBytes = 200}},
    };
}

std::vector<Case> kindCases() {
    using enum Message;
    using namespace std::string_literals;
    return {
        file(missingDataBlock,
             "@\xFF\xFE"
             "D\0A\0T\0A\0"s,
             "this is text in UTF-16"),
        file(missingDataBlock, "@\xFE\xFF\0D\0A"s, "this is text in UTF-16"),
        file(missingDataBlock, "\xEF\xBB\xBF@<?xml version=\"1.0\"?>", "this is XML"),
        file(missingDataBlock, "@PK\x03\x04zip", "this is an archive"),
        file(missingDataBlock,
             "@\x7f"
             "ELF\x02\x01\x01\0\0"s,
             "this is no text"),
    };
}

std::vector<Case> allCases() {
    std::vector<Case> cases = wordCases();
    for (auto more : {headerCases(), declarationCases(), layoutCases(), kindCases()})
        std::ranges::move(more, std::back_inserter(cases));
    return cases;
}

/// What no file can raise, since the parts of the importer exclude it from each other.
constexpr std::array kNeverOfAFile = {
    Message::accumulatorFull,  Message::attributeNotClosed, Message::arrayBracketExpected,
    Message::childOfScalar,    Message::countOnScalar,      Message::severalElementTypes,
    Message::indexBelowBounds, Message::indexOutOfBounds,   Message::uninitializedType,
    Message::unnamedType,      Message::unknownOffset,
};

ui::ImportFailure failureOf(std::string_view source, const ImportLimits& limits = {}) {
    utils::io::MemoryInputStream stream(source);
    const ImportResult result = importDataBlocks(testing::emptyPlc(), "x.db", stream, limits);
    return result ? ui::ImportFailure{.text = u"no error"} : result.error();
}

SourcePlace placeOf(const ui::ImportFailure& failure) {
    return {failure.line.value_or(0), failure.column.value_or(0)};
}

std::string utf8(std::u16string_view text) { return utils::string::detail::utf16ToUtf8(text); }

TEST(ImportPlaces, EveryMessageThatAFileCanCauseHasACase) {
    const std::vector<Case> cases = allCases();
    for (const Message message : kMessages) {
        const bool never = std::ranges::find(kNeverOfAFile, message) != kNeverOfAFile.end();
        EXPECT_NE(std::ranges::find(cases, message, &Case::message) != cases.end(), never)
            << messageText(message);
    }
}

TEST(ImportPlaces, AreThoseOfWhatIsAtFault) {
    for (Case one : allCases()) {
        const SourcePlace expected = takeMark(one.source);
        const ui::ImportFailure failure = failureOf(one.source, one.limits);
        EXPECT_NE(utf8(failure.text).find(messageText(one.message)), std::string::npos)
            << utf8(failure.text) << "\n"
            << one.source;
        EXPECT_EQ(shown(placeOf(failure)), shown(expected)) << utf8(failure.text) << "\n"
                                                            << one.source;
        const std::string hint = utf8(failure.hint.value_or(u""));
        EXPECT_TRUE(one.hint.empty() ? hint.empty() : hint.starts_with(one.hint)) << hint << "\n"
                                                                                  << one.source;
    }
}

// In pieces of any size the places are the same, though nothing of the file is at hand.
TEST(ImportPlaces, DoNotDependOnWhatIsAtHand) {
    for (Case one : allCases()) {
        const SourcePlace expected = takeMark(one.source);
        testing::TrickleInputStream stream(one.source, 7);
        const ImportResult result =
            importDataBlocks(testing::emptyPlc(), "x.db", stream, one.limits);
        ASSERT_FALSE(result);
        EXPECT_EQ(shown(placeOf(result.error())), shown(expected)) << one.source;
    }
}

TEST(ImportPlaces, AreCountedAsEditorsCount) {
    const auto place = [](std::string_view source) { return shown(placeOf(failureOf(source))); };
    EXPECT_EQ(place("\xEF\xBB\xBFPROGRAM"), "1:1");
    EXPECT_EQ(place("\xEF\xBB\xBF\nPROGRAM"), "2:1");
    EXPECT_EQ(place("// a\r\n// b\rPROGRAM"), "3:1");
    EXPECT_EQ(place("\r\n\r\n\n\n\r\rPROGRAM"), "7:1");
    EXPECT_EQ(place("(* \u00E4\u20AC\U0001F600 *) PROGRAM"), "1:11");
    EXPECT_EQ(place("(* \xE4 *)\t\tPROGRAM"), "1:10");
    EXPECT_EQ(place("(* \xE2\x82 *) PROGRAM"), "1:9") << "one ill-formed sequence";
    EXPECT_EQ(place("(*" + std::string(200'000, 'x') + "\u00E4*)PROGRAM"), "1:200006");
    std::string umlauts;
    for (int count = 0; count < 100'000; ++count)
        umlauts += "\u20AC";
    EXPECT_EQ(place("(*" + umlauts + "*)PROGRAM"), "1:100005");
}

TEST(ImportPlaces, OfAFileThatCannotBeReadTwiceAreLeftOut) {
    class Once final : public utils::io::InputStream {
    public:
        void rewind() override {
            if (read_)
                throw std::system_error(std::make_error_code(std::errc::invalid_seek));
        }

    protected:
        bool refill() override {
            static constexpr std::string_view kBytes = "PROGRAM x";
            setBuffer(kBytes.data(), kBytes.data() + (read_ ? 0 : kBytes.size()));
            return !std::exchange(read_, true);
        }

    private:
        bool read_ = false;
    };
    Once stream;
    stream.skipElement();
    const ImportResult result = importDataBlocks(testing::emptyPlc(), "x.db", stream);
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().line);
    EXPECT_FALSE(result.error().hint);
}

TEST(ImportPlaces, FilesThatCannotBeReadHaveAHint) {
    const auto hint = [](const std::filesystem::path& path) {
        const ImportResult result = importDataBlocks(testing::emptyPlc(), path);
        EXPECT_FALSE(result);
        EXPECT_FALSE(result.error().line);
        return utf8(result.error().hint.value_or(u""));
    };
    EXPECT_EQ(hint("/nowhere/x.db"), "there is no such file; check its name and its folder");
    EXPECT_EQ(hint("/"), "this is a folder; name a file in it");
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
