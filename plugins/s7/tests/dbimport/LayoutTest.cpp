#include "DocumentListing.hpp"
#include "ImportTesting.hpp"

#include "dbimport/DataBlockReading.hpp"
#include "dbimport/DataBlockWriting.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/tree/ArrayNode.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/MemoryPosition.hpp"
#include "dbimport/tree/ScalarNode.hpp"
#include "dbimport/tree/StructNode.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

namespace encoder = utils::json::encoder;
using testing::dataBlock;

constexpr MemoryPosition advancedBits(MemoryPosition position, std::uint64_t count) {
    position.advanceBits(count);
    return position;
}
constexpr MemoryPosition advancedBytes(MemoryPosition position, std::uint64_t count) {
    position.advanceBytes(count);
    return position;
}
constexpr MemoryPosition byteAligned(MemoryPosition position) {
    position.alignToByte();
    return position;
}
constexpr MemoryPosition wordAligned(MemoryPosition position) {
    position.alignToWord();
    return position;
}

static_assert(advancedBits({0, 0}, 1) == MemoryPosition{0, 1});
static_assert(advancedBits({0, 7}, 1) == MemoryPosition{1, 0});
static_assert(advancedBits({3, 5}, 20) == MemoryPosition{6, 1});
static_assert(advancedBytes({3, 0}, 4) == MemoryPosition{7, 0});
static_assert(advancedBytes({3, 5}, 2) == MemoryPosition{5, 5});
static_assert(byteAligned({3, 0}) == MemoryPosition{3, 0});
static_assert(byteAligned({3, 1}) == MemoryPosition{4, 0});
static_assert(wordAligned({4, 0}) == MemoryPosition{4, 0});
static_assert(wordAligned({3, 0}) == MemoryPosition{4, 0});
static_assert(wordAligned({3, 7}) == MemoryPosition{4, 0});
static_assert(wordAligned({4, 1}) == MemoryPosition{6, 0});

std::vector<std::string> layoutOf(std::string_view members) {
    return testing::Listing(testing::import(dataBlock(members)).text).lines();
}

using Lines = std::vector<std::string>;

TEST(Layout, PlacesOneVariableBehindTheOther) {
    const std::string source = dataBlock(R"(
        a : Bool; b : Bool; c : Int; d : Byte; e : Real; s : String[10];
        f : Array[1..3] of Bool;
        st : Struct x : Bool; y : Int; END_STRUCT;
        w : WString; t : DTL; h { ExternalAccessible := 'False' } : Int; z : Char;)");
    const ImportContext context;
    utils::io::MemoryInputStream stream(source);
    ImportFindings findings;
    const auto records = readDataBlocks(stream, context, {}, findings);
    const auto& body = *records.at(0).root->children().at(0);

    const std::vector<std::pair<std::string_view, MemoryPosition>> expected = {
        {"a", {0, 1}},   {"b", {0, 2}},   {"c", {4, 0}},   {"d", {5, 0}},
        {"e", {10, 0}},  {"s", {22, 0}},  {"f", {24, 0}},  {"st", {28, 0}},
        {"w", {540, 0}}, {"t", {552, 0}}, {"h", {552, 0}}, {"z", {553, 0}}};
    ASSERT_EQ(body.children().size(), expected.size());
    StringOutputStream text;
    encoder::Document document(text, encoder::Format::compact);
    auto target = document.array();
    ElementBudget budget(1000);
    ElementPath path("Data", true, budget);
    MemoryPosition position;
    for (std::size_t index = 0; index < expected.size(); ++index) {
        body.children()[index]->writeElements(target, position, path);
        EXPECT_EQ(body.children()[index]->name(), expected[index].first);
        EXPECT_EQ(position, expected[index].second) << expected[index].first;
    }

    EXPECT_EQ(testing::Listing(testing::import(source).text).lines(),
              (Lines{"a Bool DB0.0", "b Bool DB0.1", "c Int DB2", "d Byte DB4", "e Real DB6",
                     "s String (10) DB10", "f[1] Bool DB22.0", "f[2] Bool DB22.1",
                     "f[3] Bool DB22.2", "st:", "st.x Bool DB24.0", "st.y Int DB26",
                     "w WString (254) DB28", "z USInt DB552"}));
    const auto memory = testing::import(source).memory;
    ASSERT_EQ(memory.size(), 1U);
    EXPECT_EQ(memory[0].name, "Data");
    EXPECT_EQ(memory[0].bytes, 554U) << "the body ends at a word";
}

TEST(Layout, EveryTypeTakesItsMemory) {
    struct Row {
        std::string_view keyword;
        std::string_view item; // type and size as written; empty where there is no item
        std::uint64_t bytes;
    };
    const std::vector<Row> rows = {
        {"Byte", "Byte", 1},
        {"SInt", "SInt", 1},
        {"USInt", "USInt", 1},
        {"Char", "USInt", 1},
        {"Int", "Int", 2},
        {"UInt", "UInt", 2},
        {"Word", "Word", 2},
        {"WChar", "UInt", 2},
        {"Date", "UInt", 2},
        {"DInt", "DInt", 4},
        {"UDInt", "UDInt", 4},
        {"DWord", "DWord", 4},
        {"Real", "Real", 4},
        {"Time", "UDInt", 4},
        {"Time_Of_Day", "UDInt", 4},
        {"LInt", "LInt", 8},
        {"ULInt", "ULInt", 8},
        {"LWord", "LWord", 8},
        {"LReal", "LReal", 8},
        {"LTime", "ULInt", 8},
        {"LTime_Of_Day", "ULInt", 8},
        {"LDT", "ULInt", 8},
        {"String", "String (254)", 256},
        {"String[0]", "String (0)", 2},
        {"String[7]", "String (7)", 9},
        {"String[300]", "String (300)", 302},
        {"WString", "WString (254)", 512},
        {"WString[0]", "WString (0)", 4},
        {"WString[7]", "WString (7)", 18},
        {"String[2147483647]", "String (2147483647)", 2147483649},
        {"WString[2147483647]", "WString (2147483647)", 4294967298},
        {"S5Time", "", 2},
        {"Date_And_Time", "", 8},
        {"DTL", "", 12},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.keyword);
        const bool byteAligned = row.bytes == 1;
        const std::string place = byteAligned ? "1" : "2";
        const std::uint64_t end = row.bytes + (byteAligned ? 1 : 2);
        Lines expected = {"a Bool DB0.0"};
        if (!row.item.empty())
            expected.push_back("b " + std::string(row.item) + " DB" + place);
        expected.push_back("c Byte DB" + std::to_string(end));
        EXPECT_EQ(layoutOf("a : Bool; b : " + std::string(row.keyword) + "; c : Byte;"), expected);
    }
}

TEST(Layout, BitsFillBytes) {
    std::string members;
    Lines expected;
    for (int index = 0; index < 18; ++index) {
        const std::string name = "b" + std::to_string(index);
        members += name + " : Bool;";
        expected.push_back(name + " Bool DB" + std::to_string(index / 8) + "." +
                           std::to_string(index % 8));
    }
    EXPECT_EQ(layoutOf(members), expected);
}

TEST(Layout, HiddenVariablesTakeNoMemory) {
    EXPECT_EQ(layoutOf("a : Bool; b { ExternalAccessible := 'False' } : Bool; c : Bool;"),
              (Lines{"a Bool DB0.0", "c Bool DB0.1"}));
    EXPECT_EQ(layoutOf("a : Bool; s { ExternalAccessible := 'False' } : Struct x : Int; "
                       "END_STRUCT; b : Bool;"),
              (Lines{"a Bool DB0.0", "b Bool DB0.1"}));
    EXPECT_EQ(layoutOf("a : Bool; s { ExternalAccessible := 'False' } : Array[0..9] of Int; "
                       "t { ExternalAccessible := 'False' } : DTL; b : Bool;"),
              (Lines{"a Bool DB0.0", "b Bool DB0.1"}));
}

TEST(Layout, TypesWithoutItemsMoveWhatFollows) {
    EXPECT_EQ(layoutOf("a : Bool; t : S5Time; b : Bool; d : Date_And_Time; c : Bool; e : DTL; "
                       "f : Bool;"),
              (Lines{"a Bool DB0.0", "b Bool DB4.0", "c Bool DB14.0", "f Bool DB28.0"}));
    EXPECT_EQ(layoutOf("t : Array[1..3] of S5Time; a : Byte;"), (Lines{"a Byte DB6"}));
}

TEST(Layout, RunsOfTheLastDimensionStartOnAByte) {
    EXPECT_EQ(
        layoutOf("m : Array[0..1, 0..2] of Bool; x : Bool;"),
        (Lines{"m[0,0] Bool DB0.0", "m[0,1] Bool DB0.1", "m[0,2] Bool DB0.2", "m[1,0] Bool DB1.0",
               "m[1,1] Bool DB1.1", "m[1,2] Bool DB1.2", "x Bool DB2.0"}));
    EXPECT_EQ(layoutOf("m : Array[0..1, 0..1, 0..1] of Bool; x : Bool;"),
              (Lines{"m[0,0,0] Bool DB0.0", "m[0,0,1] Bool DB0.1", "m[0,1,0] Bool DB1.0",
                     "m[0,1,1] Bool DB1.1", "m[1,0,0] Bool DB2.0", "m[1,0,1] Bool DB2.1",
                     "m[1,1,0] Bool DB3.0", "m[1,1,1] Bool DB3.1", "x Bool DB4.0"}));
    EXPECT_EQ(layoutOf("m : Array[0..1, 0..2] of Byte; x : Byte;").back(), "x Byte DB6");
}

TEST(Layout, ArraysBeginAndEndAtWords) {
    EXPECT_EQ(
        layoutOf("a : Byte; b : Array[0..2] of Byte; c : Byte;"),
        (Lines{"a Byte DB0", "b[0] Byte DB2", "b[1] Byte DB3", "b[2] Byte DB4", "c Byte DB6"}));
    EXPECT_EQ(layoutOf("a : Bool; b : Array[5..4] of Int; c : Bool; d : Array[0..1, 5..4] of Int; "
                       "e : Bool;"),
              (Lines{"a Bool DB0.0", "c Bool DB2.0", "e Bool DB4.0"}));
}

TEST(Layout, IndicesFollowTheBounds) {
    EXPECT_EQ(layoutOf("a : Array[-1..1] of Int;"),
              (Lines{"a[-1] Int DB0", "a[0] Int DB2", "a[1] Int DB4"}));
    EXPECT_EQ(layoutOf("a : Array[9..11, -1..0] of Byte;"),
              (Lines{"a[9,-1] Byte DB0", "a[9,0] Byte DB1", "a[10,-1] Byte DB2", "a[10,0] Byte DB3",
                     "a[11,-1] Byte DB4", "a[11,0] Byte DB5"}));
    EXPECT_EQ(layoutOf("a : Array[2147483646..2147483647] of Byte;"),
              (Lines{"a[2147483646] Byte DB0", "a[2147483647] Byte DB1"}));
    EXPECT_EQ(layoutOf("a : Array[-2147483648..-2147483647] of Byte;"),
              (Lines{"a[-2147483648] Byte DB0", "a[-2147483647] Byte DB1"}));
}

TEST(Layout, StructsBeginAndEndAtWords) {
    EXPECT_EQ(layoutOf("a : Bool; s : Struct b : Byte; t : Struct c : Bool; END_STRUCT; d : Bool; "
                       "END_STRUCT; e : Byte; f : Struct END_STRUCT; g : Byte;"),
              (Lines{"a Bool DB0.0", "s:", "s.b Byte DB2", "s.t:", "s.t.c Bool DB4.0",
                     "s.d Bool DB6.0", "e Byte DB8", "f:", "g Byte DB10"}));
}

TEST(Layout, ArraysOfStructsAreStructsWithAnIndex) {
    EXPECT_EQ(layoutOf("m : Array[1..2] of Struct a : Array[0..1] of Byte; b : Struct c : Bool; "
                       "END_STRUCT; END_STRUCT; x : Bool;"),
              (Lines{"m[1]:", "m[1].a[0] Byte DB0", "m[1].a[1] Byte DB1",
                     "m[1].b:", "m[1].b.c Bool DB2.0", "m[2]:", "m[2].a[0] Byte DB4",
                     "m[2].a[1] Byte DB5", "m[2].b:", "m[2].b.c Bool DB6.0", "x Bool DB8.0"}));
}

TEST(Layout, ReadOnlyIsHandedDown) {
    EXPECT_EQ(
        layoutOf("s { ExternalWritable := 'False' } : Struct a : Int; "
                 "b { ExternalWritable := 'True' } : Array[0..0] of Int; END_STRUCT; c : Int;"),
        (Lines{"s:", "s.a Int DB0 readonly", "s.b[0] Int DB2 readonly", "c Int DB4"}));
}

TEST(Layout, EachDataBlockStartsAtZero) {
    const std::string source = dataBlock("a : Int;") +
                               "DATA_BLOCK Other {S7_Optimized_Access := FALSE} STRUCT b : Real; "
                               "c : Bool; END_STRUCT END_DATA_BLOCK";
    const auto document = testing::import(source);
    EXPECT_EQ(testing::Listing(document.text).lines(),
              (Lines{"a Int DB0", "b Real DB0", "c Bool DB4.0"}));
    ASSERT_EQ(document.memory.size(), 2U);
    EXPECT_EQ(document.memory[0].bytes, 2U);
    EXPECT_EQ(document.memory[1].name, "Other");
    EXPECT_EQ(document.memory[1].bytes, 6U);
}

TEST(Layout, AnIndexReturnsToTheLowerBounds) {
    ArrayIndex index(std::vector<Dimension>{{-1, 0}, {3, 5}});
    EXPECT_EQ(index.elementCount(), 6U);
    std::string texts;
    std::string wraps;
    for (std::uint64_t element = 0; element < index.elementCount(); ++element) {
        texts += index.text();
        wraps += index.step() ? 'w' : '.';
    }
    EXPECT_EQ(texts, "[-1,3][-1,4][-1,5][0,3][0,4][0,5]");
    EXPECT_EQ(wraps, "..w..w");
    EXPECT_EQ(index.text(), "[-1,3]");
    EXPECT_EQ(index.currentIndex()[0], -1);
    EXPECT_EQ(index.currentIndex()[1], 3);
}

TEST(Layout, AnIndexWithoutDimensionsHasOneElement) {
    ArrayIndex index({});
    EXPECT_EQ(index.elementCount(), 1U);
    EXPECT_EQ(index.text(), "[]");
    EXPECT_FALSE(index.step());
    EXPECT_EQ(index.text(), "[]");
}

TEST(Layout, CountsThatDoNotFitAreTheLargest) {
    const Dimension whole{-2147483647, 2147483647};
    EXPECT_EQ(ArrayIndex(std::vector<Dimension>{whole}).elementCount(), 4294967295U);
    EXPECT_EQ(ArrayIndex(std::vector<Dimension>{whole, whole, whole}).elementCount(),
              18446744073709551615U);
    EXPECT_EQ(ArrayIndex(std::vector<Dimension>{whole, whole, whole, {1, 0}}).elementCount(), 0U);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
