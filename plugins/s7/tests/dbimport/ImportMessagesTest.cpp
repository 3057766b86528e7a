#include "ImportTesting.hpp"

#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/parser/AttributeTable.hpp"
#include "dbimport/parser/DbFileParser.hpp"
#include "dbimport/reader/DbFileReader.hpp"
#include "dbimport/tree/ArrayNode.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/MemoryPosition.hpp"
#include "dbimport/tree/ScalarNode.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::errorOf;
using testing::importError;

/// What ends with one message, and the whole text that it ends with.
struct Case {
    Message message;
    std::string expected;
    std::function<std::string()> error;
};

Case file(Message message, std::string expected, std::string source) {
    return {message, std::move(expected),
            [source = std::move(source)] { return importError(source); }};
}

Case members(Message message, std::string expected, std::string_view declarations) {
    return file(message, std::move(expected), dataBlock(declarations));
}

Case limited(Message message, std::string expected, std::string_view declarations,
             ImportLimits limits) {
    return {message, std::move(expected),
            [source = dataBlock(declarations), limits] { return importError(source, limits); }};
}

/// For messages that no file can raise: the parts of the importer exclude them from each other.
Case direct(Message message, std::string expected, std::function<void()> action) {
    return {message, std::move(expected), [action = std::move(action)] { return errorOf(action); }};
}

void fillAccumulatorTwice() {
    Accumulator accumulator;
    accumulator.put('/');
    accumulator.put('(');
}

void expectMissingBracket() {
    utils::io::MemoryInputStream stream("x");
    DbFileReader reader(stream);
    consume(reader, ']', Message::arrayBracketExpected);
}

ScalarNode scalar(std::string_view keyword, std::optional<std::uint64_t> count = {}) {
    static const ImportContext context;
    return ScalarNode("x", ExternalAccess(), keyword, count, context);
}

void writeArrayWithoutElementType() {
    StringOutputStream text;
    utils::json::encoder::Document document(text, utils::json::encoder::Format::compact);
    auto target = document.array();
    ElementBudget budget(10);
    ElementPath path("Data", false, budget);
    MemoryPosition position;
    ArrayNode("x", ExternalAccess(), std::vector<Dimension>{{0, 1}})
        .writeElements(target, position, path);
}

void stepBelowBounds() {
    std::int32_t current = -2;
    static_cast<void>(stepDimension(current, -1, 3, 1));
}

void stepOutOfBounds() { static_cast<void>(ArrayIndex(std::vector<Dimension>{{1, 0}}).step()); }

void placeTypeWithoutSize() {
    MemoryPosition position;
    placeScalar({S7DataType::DTL, "DTL", Alignment::word, 0, 0, false}, {}, position);
}

std::string structs(int levels) {
    std::string text;
    for (int level = 0; level < levels; ++level)
        text += "s : Struct ";
    return text;
}

std::string dimensions(int count) {
    std::string text = "x : Array[0..1";
    for (int index = 1; index < count; ++index)
        text += ", 0..1";
    return text + "] of Int;";
}

std::vector<Case> readingCases() {
    using enum Message;
    return {
        members(blankExpected, "Syntax error: empty space or comment expected", "x : Int (5);"),
        direct(accumulatorFull, "Accumulator already contains a character!", fillAccumulatorTwice),
        file(commentOpenAtEnd, "Reached eof with open comment", "(* never closed"),
        file(endInsideDeclaration, "Reached the end of the file inside a declaration",
             "DATA_BLOCK \"x"),
        members(invalidNumber, "invalid stoi argument", "x : Array[a..3] of Int;"),
        members(numberOutOfRange, "stoi argument out of range", "x : Array[0..2147483648] of Int;"),
        file(missingDataBlock, "Missing DATA_BLOCK declaration", "TYPE"),
        file(keywordAsBlockName, "Keyword not allowed as DATA_BLOCK name", "DATA_BLOCK begin"),
        file(emptyBlockName, "Empty DB name not allowed", "DATA_BLOCK \"\""),
        file(dbNumberExpected, "Expected DB number", "DATA_BLOCK DB x"),
        file(duplicateBlockName, "Cannot have DB with the same name in the same .db file",
             dataBlock("") + dataBlock("")),
        file(optimizedAccess, "S7 Optimized Access should be set to FALSE",
             "DATA_BLOCK x { S7_Optimized_Access := 'TRUE' }"),
        file(headerLineWithoutWord, "Syntax error in block attributes", "DATA_BLOCK x : 5"),
        file(nestedDataBlock, "Nested DATA_BLOCK declarations not allowed!",
             "DATA_BLOCK x DATA_BLOCK y"),
        file(emptyHeaderWord, "Empty keyword not allowed", "DATA_BLOCK x"),
        file(endOfFile, "Reached EOF prematurely", "DATA_BLOCK x VERSION : 0.1"),
        members(emptyVariableName, "Variable name cannot be empty!", "x : Int; : Int;"),
        members(keywordAsVariableName, "Keyword not allowed where variable name is expected",
                "begin : Int;"),
        members(endStructWithoutSemicolon, "Semi-colon expected after END_STRUCT",
                "x : Struct END_STRUCT y : Int;"),
        members(emptyAttributeName, "Attribute variable name cannot be empty!",
                "x { := 'False' } : Int;"),
        direct(attributeNotClosed, "Bad syntax in {variable} (inside)",
               [] { static_cast<void>(endsAttributeBlock(':')); }),
        members(assignmentExpected, "Syntax error: assignment expected", "x { a } : Int;"),
        members(keywordInValue, "Special keyword not allowed in assignment block",
                "x : Int := begin;"),
        file(endInsideValue, "Reached the end of the file inside an assigned value",
             "DATA_BLOCK x BEGIN y := 5"),
        members(missingSeparator, "Missing node separator (:)", "x Int;"),
        members(badArrayDeclaration, "Bad syntax in Array declaration",
                "x : Array[1..2] of Array[1..2] of Int;"),
        members(badArraySyntax, "Bad array syntax", "x : Array[0. .3] of Int;"),
        members(badArrayIndex, "Bad syntax in Array index", "x : Array[0..3; of Int;"),
        direct(arrayBracketExpected, "Expected closing bracket ] in array declaration",
               expectMissingBracket),
        members(badStringDeclaration, "Bad syntax: String declaration", "x : String[20;"),
        members(negativeStringLength, "String cannot be of negative size!", "x : String[-1];"),
        members(semicolonExpected, "End-of-node syntax error: expected ;", "x : Int[3];"),
        file(keywordAsTarget, "Keyword not allowed in assignment block",
             "DATA_BLOCK x BEGIN BEGIN"),
        file(emptyTarget, "Syntax error in assignment block", "DATA_BLOCK x BEGIN y := 1; := 5;"),
        file(targetWithoutAssignment, "Syntax error: assignment expected in assignment block Speed",
             "DATA_BLOCK x BEGIN Speed 5;"),
    };
}

std::vector<Case> layoutCases() {
    using enum Message;
    return {
        direct(childOfScalar, "Cannot add child to ScalarNode!",
               [] { scalar("int").addChild(nullptr); }),
        members(unknownType, "Variable type not recognized or supported: timer", "x : Timer;"),
        direct(countOnScalar, "Scalar type error: only String can have a number of elements",
               [] { scalar("int", 3); }),
        members(negativeArraySize, "Detected negative array size", "x : Array[3..1] of Int;"),
        direct(severalElementTypes, "Array cannot have more than one element type",
               writeArrayWithoutElementType),
        direct(indexBelowBounds, "Error computing array indices", stepBelowBounds),
        direct(indexOutOfBounds, "Out of bounds in array indexing", stepOutOfBounds),
        direct(uninitializedType, "Attempting to print uninitialized type",
               [] { static_cast<void>(typeName(S7DataType::Uninitialized)); }),
        direct(unnamedType, "Scalar type not implemented",
               [] { static_cast<void>(typeName(static_cast<S7DataType>(21))); }),
        direct(unknownOffset, "Unknown offset for type DTL", placeTypeWithoutSize),
        members(structsTooDeep, "Structs are nested too deep, the maximum number of levels is 256",
                structs(257)),
        members(tooManyDimensions, "Array with too many dimensions, the maximum number is 64",
                dimensions(65)),
        members(dimensionTooLarge, "Array dimension too large, the maximum size is 4294967295",
                "x : Array[-2147483648..2147483647] of Int;"),
        members(tooManyElements,
                "Too many variables and array elements in one file, the maximum number is 16777216",
                "x : Array[0..2147483647] of S5Time;"),
        limited(documentTooLarge, "Import document too large, the maximum number of bytes is 100",
                "x : Int;", {.documentBytes = 100}),
    };
}

std::vector<Case> allCases() {
    std::vector<Case> cases = readingCases();
    std::ranges::move(layoutCases(), std::back_inserter(cases));
    return cases;
}

TEST(ImportMessages, EveryMessageHasACase) {
    const std::vector<Case> cases = allCases();
    for (const Message message : kMessages)
        EXPECT_EQ(std::ranges::count(cases, message, &Case::message), 1) << messageText(message);
}

TEST(ImportMessages, EveryCaseEndsWithItsMessage) {
    for (const Case& one : allCases()) {
        EXPECT_EQ(one.error(), one.expected);
        EXPECT_TRUE(one.expected.starts_with(messageText(one.message))) << one.expected;
    }
}

TEST(ImportMessages, TheUserIsToldTheFileAndTheMessage) {
    const auto errorText = [](const char* path, const char* message) {
        return importResult(path,
                            [&]() -> ui::ImportedDocument { throw std::runtime_error(message); })
            .error()
            .text;
    };
    EXPECT_EQ(errorText("/tmp/a b.db", "Expected DB number"),
              u"Error importing S7 data blocks from /tmp/a b.db: Expected DB number ");
    EXPECT_EQ(errorText("/\xC3\xA4{}.db", "{} \xFF"),
              u"Error importing S7 data blocks from /\u00E4{}.db: {} \uFFFD ");
}

TEST(ImportMessages, WhatIsNoStandardExceptionIsATextToo) {
    const ImportResult result =
        importResult("x.db", []() -> ui::ImportedDocument { throw 5; }); // NOLINT
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().text, u"Error importing S7 data blocks from x.db: unknown error ");
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
