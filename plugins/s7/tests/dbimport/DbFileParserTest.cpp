#include "ImportTesting.hpp"

#include "dbimport/DataBlockReading.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/parser/AttributeTable.hpp"
#include "dbimport/tree/ArrayNode.hpp"
#include "dbimport/tree/ScalarNode.hpp"
#include "dbimport/tree/StructNode.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::importError;

const ImportContext& emptyContext() {
    static const ImportContext context;
    return context;
}

std::vector<DataBlockRecord> read(std::string_view source) {
    testing::TrickleInputStream stream(source);
    ImportFindings findings;
    return readDataBlocks(stream, emptyContext(), {}, findings);
}

std::vector<std::string> namesOf(std::string_view source) {
    std::vector<std::string> names;
    for (const DataBlockRecord& record : read(source))
        names.push_back(record.name);
    return names;
}

/// A node and all below it in one line, in the terms of the tree.
std::string describe(const DataBlockNode& node) {
    std::string text;
    if (const auto* const scalar = dynamic_cast<const ScalarNode*>(&node)) {
        text = typeName(scalar->type());
        if (scalar->elementCount())
            text += "[" + std::to_string(*scalar->elementCount()) + "]";
    } else if (const auto* const array = dynamic_cast<const ArrayNode*>(&node)) {
        text = "Array" + std::string(array->index().text());
        for (const std::uint32_t size : array->index().dimensionSizes())
            text += "*" + std::to_string(size);
    } else if (const auto* const structure = dynamic_cast<const StructNode*>(&node)) {
        text = structure->transparent() ? "Body" : "Struct";
    } else {
        text = "Root";
    }
    text = node.name() + ":" + text;
    if (!node.access().externalAccessible)
        text += "!hidden";
    if (!node.access().externalWritable)
        text += "!readonly";
    std::string members;
    for (const auto& child : node.children())
        members += (members.empty() ? "" : " ") + describe(*child);
    return members.empty() ? text : text + "{" + members + "}";
}

/// The members of the only data block.
std::string members(std::string_view declarations) {
    const auto records = read(dataBlock(declarations));
    std::string text = describe(*records.at(0).root->children().at(0));
    return text.substr(text.find('{'));
}

TEST(DbFileParser, ReadsAWholeDataBlock) {
    const auto records = read(testing::readFile(testing::goldenFolder() / "motor_data.db"));
    ASSERT_EQ(records.size(), 1U);
    EXPECT_EQ(records[0].name, "Motor_Data");
    EXPECT_EQ(records[0].dbNumber, std::nullopt);
    EXPECT_EQ(describe(*records[0].root),
              "Motor_Data:Root{Motor_Data:Body{Speed:Int Running:Bool!readonly Name:String[20] "
              "Temps:Array[0]*4{Temps:Real} "
              "Axis:Struct{Pos:DInt Hidden:Bool!hidden!readonly}}}");
}

TEST(DbFileParser, FilesWithoutDataBlocks) {
    for (const std::string_view source :
         {"", "  \n\t", "\xEF\xBB\xBF", "// x", "(* a (* b *) *)\n// c\n", "\xEF\xBB\xBF // x\r\n"})
        EXPECT_TRUE(read(source).empty()) << source;
}

TEST(DbFileParser, NamesOfDataBlocks) {
    const std::string tail = "\n{S7_Optimized_Access:=FALSE} STRUCT END_STRUCT END_DATA_BLOCK\n";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"DATA_BLOCK Data", "Data"},
        {"data_block \"My Data // (* x *)\"", "My Data // (* x *)"},
        {"DATA_BLOCK\"glued\"", "glued"},
        {"DATA_BLOCK // why\n\"x\"", "x"},
        {"DATA_BLOCK DB 17", "DB17"},
        {"DATA_BLOCK db 17", "DB17"},
        {"DATA_BLOCK DB (* x *) 007", "DB007"},
        {"DATA_BLOCK DB -5", "DB-5"},
        {"DATA_BLOCK DB +5", "DB+5"},
        {"DATA_BLOCK \"db\" 17", "DB17"},
        {"DATA_BLOCK db5", "DB5"},
        {"DATA_BLOCK Db12", "DB12"},
        {"DATA_BLOCK \"dB12\"", "DB12"},
        {"DATA_BLOCK DB5x", "DB5x"},
        {"DATA_BLOCK db_5", "db_5"},
        {"DATA_BLOCK d", "d"},
        {"DATA_BLOCK a/b(c)", "a/b(c)"},
        {"DATA_BLOCK end_struct", "end_struct"},
        {"DATA_BLOCK \"\xC3\x84\xC3\x96\"", "\xC3\x84\xC3\x96"},
        // Not UTF-8: the name is that of the document, in which the project will find it again.
        {"DATA_BLOCK \"\xC4x\"", "\xC3\x84x"},
    };
    for (const auto& [header, name] : cases)
        EXPECT_EQ(namesOf(header + tail), std::vector{name}) << header;
}

TEST(DbFileParser, FileWithSeveralDataBlocks) {
    const std::string body = "{S7_Optimized_Access := 'false'} STRUCT x : Int; END_STRUCT ";
    EXPECT_EQ(namesOf("DATA_BLOCK b " + body + "END_DATA_BLOCK DATA_BLOCK a " + body +
                      "BEGIN END_DATA_BLOCK DATA_BLOCK\"c\"" + body + "END_DATA_BLOCK"),
              (std::vector<std::string>{"b", "a", "c"}));
}

TEST(DbFileParser, DataBlocksWithoutABodyAreDropped) {
    EXPECT_TRUE(namesOf("DATA_BLOCK a BEGIN x := 1; END_DATA_BLOCK").empty());
    EXPECT_TRUE(namesOf("DATA_BLOCK a VERSION : 0.1 END_DATA_BLOCK").empty());
    EXPECT_TRUE(namesOf("DATA_BLOCK a END_DATA_BLOCK DATA_BLOCK b BEGIN END_DATA_BLOCK").empty());
    EXPECT_EQ(importError("DATA_BLOCK a END_DATA_BLOCK DATA_BLOCK a BEGIN END_DATA_BLOCK"),
              "Cannot have DB with the same name in the same .db file");
    EXPECT_EQ(importError("DATA_BLOCK DB5 END_DATA_BLOCK DATA_BLOCK db5 END_DATA_BLOCK"),
              "Cannot have DB with the same name in the same .db file");
    EXPECT_EQ(importError("DATA_BLOCK a END_DATA_BLOCK DATA_BLOCK A END_DATA_BLOCK"), "no error");
}

TEST(DbFileParser, HeaderLines) {
    for (const std::string_view lines :
         {"TITLE = a title: with { and // and ( * in it\n{S7_Optimized_Access := 'FALSE'}",
          "{S7_Optimized_Access := 'FALSE'}\nTITLE =\nVERSION : 0.1\nAUTHOR : 'a : b // c'",
          "{ S7_Optimized_Access := 'FALSE' } FAMILY:x NAME :y NON_RETAIN RETAIN",
          "{ DB_Accessible := 'TRUE'; S7_OPTIMIZED_ACCESS : = false // x\n}",
          "{ S7_Optimized_Access := 'TRUE'; S7_Optimized_Access := FALSE }",
          "ignored {S7_Optimized_Access := 'False'} KNOW_HOW_PROTECT",
          "{S7_Optimized_Access := (* x *) 'FALSE' (* y *)}",
          "{S7_Optimized_Access := FAL // x\nSE}",
          "{S7_Optimized_Access := 'FALSE'} {S7_Optimized_Access := 'FALSE'} 'word'"}) {
        const std::string source = std::string("DATA_BLOCK a\n")
                                       .append(lines)
                                       .append("\nSTRUCT\nEND_STRUCT END_DATA_BLOCK");
        EXPECT_EQ(importError(source), "no error") << lines;
    }
}

TEST(DbFileParser, OnlyStandardAccessIsImported) {
    for (const std::string_view lines :
         {"", "VERSION : 0.1", "{S7_Optimized_Access := 'TRUE'}", "{S7_Optimized_Access := }",
          "{S7_Optimized_Access := \"FALSE\"}", "{S7_Optimized_Access := 'FAL' 'SE'}",
          "{ Other := 'FALSE' }", "{S7_Optimized_Access := 'FALSE'} { Other := 'FALSE' }",
          "{S7_Optimized_Access := FALSE; S7_Optimized_Access := 'TRUE'}"}) {
        const std::string source = std::string("DATA_BLOCK a\n")
                                       .append(lines)
                                       .append("\nSTRUCT\nEND_STRUCT END_DATA_BLOCK");
        EXPECT_EQ(importError(source), "S7 Optimized Access should be set to FALSE") << lines;
    }
    EXPECT_EQ(importError(dataBlock("") + "DATA_BLOCK b STRUCT END_STRUCT END_DATA_BLOCK"),
              "S7 Optimized Access should be set to FALSE")
        << "each block is asked for itself";
}

TEST(DbFileParser, Declarations) {
    const std::vector<std::pair<std::string_view, std::string_view>> cases = {
        {"a:Int;b : INT ; c\n:\nint\n;", "{a:Int b:Int c:Int}"},
        {"a : Int := 5; b : Int:=-7; c : Int : = 16#FF;", "{a:Int b:Int c:Int}"},
        {"a : Time := T#1s200ms; b : Char := 'A';", "{a:UDInt b:USInt}"},
        {"a : String := 'x; } END_STRUCT;'; b : Int;", "{a:String b:Int}"},
        {"a : Date := D#2026-06-30 // x\n; b : Real := 4(0) / (*x*) 2;", "{a:UInt b:Real}"},
        {"a : String; b : String[0]; c : WString [ 20 ] := WSTRING#'x';",
         "{a:String b:String[0] c:WString[20]}"},
        {"a : String[20x]; b : String[+7];", "{a:String[20] b:String[7]}"},
        {"\"a b\" : Int; \"struct\" : Int; \"\" : Int; \"x;:{\":Int;",
         "{a b:Int struct:Int :Int x;:{:Int}"},
        {"array : Int; of : Int; string : Int; int : Int;",
         "{array:Int of:Int string:Int int:Int}"},
        {"a/b : Int; a(1) : Int; a.b : Int;", "{a/b:Int a(1):Int a.b:Int}"},
        {"a{ExternalWritable := 'False'}:Int; b { externalwritable := FALSE } : Int;",
         "{a:Int!readonly b:Int!readonly}"},
        {"a { ExternalAccessible := 'false'; S7_SetPoint := 'False' } : Int;", "{a:Int!hidden}"},
        {"a { ExternalWritable := 'True' } : Int; b { ExternalWritable := } : Int;",
         "{a:Int b:Int}"},
        {"a { ExternalVisible := 'False' } : Int; b { ExternalWritable := 0 } : Int;",
         "{a:Int b:Int}"},
        {"a { ExternalWritable := 'False'; ExternalWritable := 'True' } : Int;", "{a:Int}"},
        {"a : Array[0..3] of Int := [4(0)]; b : ARRAY [ 1 .. 15 ] OF Byte;",
         "{a:Array[0]*4{a:Int} b:Array[1]*15{b:Byte}}"},
        {"a : Array[-1..1, 0..2 , +5..5]of Bool;", "{a:Array[-1,0,5]*3*3*1{a:Bool}}"},
        {"a : Array[5..4] of Int;", "{a:Array[5]*0{a:Int}}"},
        {"a : Array[0..1] of String[5];", "{a:Array[0]*2{a:String[5]}}"},
        {"a { ExternalWritable := 'False' } : Array[0..1] of Struct x : Int; End_Struct;",
         "{a:Array[0]*2!readonly{a:Struct!readonly{x:Int!readonly}}}"},
        {"a : Struct b : Struct END_STRUCT; c : Struct d : Int; end_struct ; END_STRUCT;",
         "{a:Struct{b:Struct c:Struct{d:Int}}}"},
        {"a { ExternalAccessible := 'False' } : Struct b : Int; END_STRUCT; c : Int;",
         "{a:Struct!hidden{b:Int!hidden} c:Int}"},
        {"a : Struct \"END_STRUCT;\" b : Int;", "{a:Struct b:Int}"},
    };
    for (const auto& [declarations, expected] : cases) {
        EXPECT_EQ(members(declarations), expected) << declarations;
    }
}

TEST(DbFileParser, NamesThatAreNotUtf8BecomeThoseOfTheDocument) {
    EXPECT_EQ(members("\"\xC4\" : Int; \xC3\xA4 : Int;"), "{\xC3\x84:Int \xC3\xA4:Int}");
}

TEST(DbFileParser, TheBodyMayEndWithoutASemicolon) {
    const std::string head = "DATA_BLOCK a {S7_Optimized_Access := FALSE} STRUCT x : Int; ";
    EXPECT_EQ(importError(head + "END_STRUCT BEGIN END_DATA_BLOCK"), "no error");
    EXPECT_EQ(importError(head + "END_STRUCT; END_DATA_BLOCK"), "no error");
    EXPECT_EQ(importError(head + "end_struct ; begin x := 1; end_data_block"), "no error");
    EXPECT_EQ(importError(head + "\"END_STRUCT\" BEGIN END_DATA_BLOCK"), "no error");
}

TEST(DbFileParser, Assignments) {
    const std::string head =
        "DATA_BLOCK a {S7_Optimized_Access := FALSE} STRUCT x : Int; END_STRUCT; ";
    for (const std::string_view section :
         {"BEGIN x := 1; a[0].b := 'it''s; here'; \"q n\".m := 5; \"q\"[1] := 2; END_DATA_BLOCK",
          "x := 1; BEGIN y := 2; END_DATA_BLOCK", "BEGIN x : = ; END_DATA_BLOCK", "END_DATA_BLOCK",
          "BEGIN a[0,1] := 16#1; (* c *) b := T#1s; // d\nEND_DATA_BLOCK",
          "\"begin\" x := 1; END_DATA_BLOCK"})
        EXPECT_EQ(importError(head + std::string(section)), "no error") << section;
}

struct Fault {
    std::string_view source;
    std::string_view message;
};

/// Whole files, each with the message with which its import ends.
TEST(DbFileParser, FaultsOfDataBlocks) {
    const std::vector<Fault> faults = {
        {"x", "Missing DATA_BLOCK declaration"},
        {"TYPE x", "Missing DATA_BLOCK declaration"},
        {"\"DATA_BLOCK\" x", "Missing DATA_BLOCK declaration"},
        {"DATA_BLOCKS x", "Missing DATA_BLOCK declaration"},
        {"\xEF\xBBx", "Missing DATA_BLOCK declaration"},
        {"(* open", "Reached eof with open comment"},
        {"DATA_BLOCK", "Empty DB name not allowed"},
        {"DATA_BLOCK \"\"", "Empty DB name not allowed"},
        {"DATA_BLOCK begin", "Keyword not allowed as DATA_BLOCK name"},
        {"DATA_BLOCK \"Struct\"", "Keyword not allowed as DATA_BLOCK name"},
        {"DATA_BLOCK data_block\"x\"", "Keyword not allowed as DATA_BLOCK name"},
        {"DATA_BLOCK \"x", "Reached the end of the file inside a declaration"},
        {"DATA_BLOCK DB x", "Expected DB number"},
        {"DATA_BLOCK DB", "Expected DB number"},
        {"DATA_BLOCK \"db\"", "Expected DB number"},
        {"DATA_BLOCK DB -", "Expected DB number"},
        {"DATA_BLOCK DB 99999999999", "Expected DB number"},
        {"DATA_BLOCK x", "Empty keyword not allowed"},
        {"DATA_BLOCK x ; y", "Reached EOF prematurely"},
        {"DATA_BLOCK x VERSION : 0.1", "Reached EOF prematurely"},
        {"DATA_BLOCK x VERSION :", "Reached EOF prematurely"},
        {"DATA_BLOCK x TITLE = y", "Reached EOF prematurely"},
        {"DATA_BLOCK x NON_RETAIN", "Reached EOF prematurely"},
        {"DATA_BLOCK x {S7_Optimized_Access := FALSE}", "Reached EOF prematurely"},
        {"DATA_BLOCK x := 5", "Syntax error in block attributes"},
        {"DATA_BLOCK x = 5", "Syntax error in block attributes"},
        {"DATA_BLOCK x AUTHOR : 'y", "Reached the end of the file inside a declaration"},
        {"DATA_BLOCK x DATA_BLOCK y", "Nested DATA_BLOCK declarations not allowed!"},
        {"DATA_BLOCK x DATA_BLOCK\"y\"", "Nested DATA_BLOCK declarations not allowed!"},
        {"DATA_BLOCK x STRUCT", "S7 Optimized Access should be set to FALSE"},
        {"DATA_BLOCK x { }", "Syntax error: assignment expected"},
        {"DATA_BLOCK x {", "Attribute variable name cannot be empty!"},
        {"DATA_BLOCK x { := FALSE }", "Attribute variable name cannot be empty!"},
        {"DATA_BLOCK x { a FALSE }", "Syntax error: assignment expected"},
        {"DATA_BLOCK x { a : FALSE }", "Syntax error: assignment expected"},
        {"DATA_BLOCK x { a := FALSE; }", "Syntax error: assignment expected"},
        {"DATA_BLOCK x { a := begin }", "Special keyword not allowed in assignment block"},
        {"DATA_BLOCK x { a := FALSE", "Reached the end of the file inside an assigned value"},
        {"DATA_BLOCK x BEGIN", "Syntax error in assignment block"},
        {"DATA_BLOCK x BEGIN y := 1;", "Reached EOF prematurely"},
        {"DATA_BLOCK x BEGIN BEGIN", "Keyword not allowed in assignment block"},
        {"DATA_BLOCK x BEGIN Struct", "Keyword not allowed in assignment block"},
        {"DATA_BLOCK x BEGIN DATA_BLOCK", "Keyword not allowed in assignment block"},
        {"DATA_BLOCK x BEGIN DATA_BLOCK\"y\"", "Keyword not allowed in assignment block"},
        {"DATA_BLOCK x BEGIN y := 1; : = 5;", "Syntax error in assignment block"},
        // In front of a colon any word is a header line.
        {"DATA_BLOCK x BEGIN : = 5;", "Reached EOF prematurely"},
        {"DATA_BLOCK x BEGIN \"\" := 5;", "Syntax error in assignment block"},
        {"DATA_BLOCK x BEGIN y 5;", "Syntax error: assignment expected in assignment block y"},
        {"DATA_BLOCK x BEGIN \"a b\".C d := 5;",
         "Syntax error: assignment expected in assignment block a b.C"},
        {"DATA_BLOCK x BEGIN END_DATA_BLOCK;",
         "Syntax error: assignment expected in assignment block END_DATA_BLOCK;"},
        {"DATA_BLOCK x BEGIN y : 5;", "Syntax error: assignment expected"},
        {"DATA_BLOCK x BEGIN y := 5", "Reached the end of the file inside an assigned value"},
        {"DATA_BLOCK x BEGIN y := 'a", "Reached the end of the file inside a declaration"},
        {"DATA_BLOCK x BEGIN y := 5 END_DATA_BLOCK",
         "Special keyword not allowed in assignment block"},
        {"DATA_BLOCK x END_DATA_BLOCK y", "Missing DATA_BLOCK declaration"},
    };
    for (const Fault& fault : faults)
        EXPECT_EQ(importError(fault.source), fault.message) << fault.source;
}

/// What follows STRUCT, up to the end of the file.
TEST(DbFileParser, FaultsOfDeclarations) {
    const std::string endOfDeclaration = "Reached the end of the file inside a declaration";
    const std::vector<Fault> faults = {
        {"", "Variable name cannot be empty!"},
        {"x : Int;", "Variable name cannot be empty!"},
        {"x : Int; : Int;", "Variable name cannot be empty!"},
        // In front of a colon any word is a header line, and STRUCT is one.
        {": Int;", "Reached EOF prematurely"},
        {"; x : Int;", "Variable name cannot be empty!"},
        {"x : Struct; y : Int;", "Variable name cannot be empty!"},
        {"BEGIN : Int;", "Keyword not allowed where variable name is expected"},
        {"Struct : Int;", "Keyword not allowed where variable name is expected"},
        {"END_DATA_BLOCK", "Keyword not allowed where variable name is expected"},
        {"x : Struct y : Int; END_STRUCT z : Int;", "Semi-colon expected after END_STRUCT"},
        {"x : Struct \"END_STRUCT\" : Int;", "Semi-colon expected after END_STRUCT"},
        {"x", "Missing node separator (:)"},
        {"x y : Int;", "Missing node separator (:)"},
        {"x; y : Int;", "Missing node separator (:)"},
        {"x, y : Int;", "Missing node separator (:)"},
        {"x {ExternalWritable := FALSE} Int;", "Missing node separator (:)"},
        {"x {", "Attribute variable name cannot be empty!"},
        {"x {} : Int;", "Syntax error: assignment expected"},
        {"x :", "End-of-node syntax error: expected ;"},
        {"x : Int", "End-of-node syntax error: expected ;"},
        {"x : Int y : Int;", "End-of-node syntax error: expected ;"},
        {"x : Int[3];", "End-of-node syntax error: expected ;"},
        {"x : Real [3];", "End-of-node syntax error: expected ;"},
        {"x : \"my type\";", "End-of-node syntax error: expected ;"},
        {"x : Int = 5;", "End-of-node syntax error: expected ;"},
        {"x : Int : 5;", "Syntax error: assignment expected"},
        {"x : Int :", "Syntax error: assignment expected"},
        {"x : Int (5);", "Syntax error: empty space or comment expected"},
        {"x : Int := 5", "Reached the end of the file inside an assigned value"},
        {"x : Int := 'a", endOfDeclaration},
        {"x : Int := struct;", "Special keyword not allowed in assignment block"},
        {"x : Int := 5 END_DATA_BLOCK;", "Special keyword not allowed in assignment block"},
        {"x : ;", "Variable type not recognized or supported: "},
        {"x : Timer;", "Variable type not recognized or supported: timer"},
        {"x : \"MyType\";", "Variable type not recognized or supported: \"mytype\""},
        {"x : Int(5);", "Variable type not recognized or supported: int(5)"},
        {"x : Array [0..1] of IEC_TIMER;", "Variable type not recognized or supported: iec_timer"},
        {"x : Array[1..2] of Array[1..2] of Int;", "Bad syntax in Array declaration"},
        {"x : Array[1..2] Int;", "Bad syntax in Array declaration"},
        {"x : Array[1..2]", "Bad syntax in Array declaration"},
        {"x : Array of Int;", "Bad array syntax"},
        {"x : Array", endOfDeclaration},
        {"x : Array[", endOfDeclaration},
        {"x : Array[0", endOfDeclaration},
        {"x : Array[0.", endOfDeclaration},
        {"x : Array[0..", "invalid stoi argument"},
        {"x : Array[0. .3] of Int;", "Bad array syntax"},
        {"x : Array[0:3] of Int;", "Bad array syntax"},
        {"x : Array[*] of Int;", "Bad array syntax"},
        {"x : Array[0..3; of Int;", "Bad syntax in Array index"},
        {"x : Array[0..3", "Bad syntax in Array index"},
        {"x : Array[0..3 of Int;", "Bad syntax in Array index"},
        {"x : Array[a..3] of Int;", "invalid stoi argument"},
        {"x : Array[0..\"MAX\"] of Int;", "invalid stoi argument"},
        {"x : Array[\"MIN\"..3] of Int;", "Bad array syntax"},
        {"x : Array[0..-] of Int;", "invalid stoi argument"},
        {"x : Array[0..2147483648] of Int;", "stoi argument out of range"},
        {"x : Array[-2147483649..0] of Int;", "stoi argument out of range"},
        {"x : Array[3..1] of Int;", "Detected negative array size"},
        {"x : Array[0..1, 3..1] of nonsense", "Detected negative array size"},
        {"x : String[20;", "Bad syntax: String declaration"},
        {"x : String[20 x];", "Bad syntax: String declaration"},
        {"x : WString[20", "Bad syntax: String declaration"},
        {"x : String[];", "invalid stoi argument"},
        {"x : String[n];", "invalid stoi argument"},
        {"x : String[99999999999];", "stoi argument out of range"},
        {"x : String[-1];", "String cannot be of negative size!"},
        {"x : String[20] x;", "End-of-node syntax error: expected ;"},
        {"END_STRUCT;", "Syntax error in assignment block"},
        {"END_STRUCT", "Syntax error in assignment block"},
        {"END_STRUCT; BEGIN", "Reached EOF prematurely"},
        {"END_STRUCT; x := 1;", "Reached EOF prematurely"},
        {"END_STRUCT; DATA_BLOCK y", "Keyword not allowed in assignment block"},
        {"END_STRUCT; BEGIN BEGIN", "Keyword not allowed in assignment block"},
        {"END_STRUCT; END_STRUCT;",
         "Syntax error: assignment expected in assignment block END_STRUCT;"},
        {"\"x", endOfDeclaration},
        {"x : (* Int;", "Reached eof with open comment"},
    };
    for (const Fault& fault : faults)
        EXPECT_EQ(importError("DATA_BLOCK a {S7_Optimized_Access := FALSE} STRUCT " +
                              std::string(fault.source)),
                  fault.message)
            << fault.source;
}

/// A node that knows, when it goes, whether the memory that it stands in is still there.
class Witness final : public DataBlockNode {
public:
    Witness(std::weak_ptr<TreeMemory> memory, std::vector<bool>& memoryWasThere)
        : DataBlockNode("witness", {}),
          memory_(std::move(memory)),
          memoryWasThere_(&memoryWasThere) {}
    Witness(const Witness&) = delete;
    Witness& operator=(const Witness&) = delete;
    ~Witness() override { memoryWasThere_->push_back(!memory_.expired()); }

    void addChild(NodeOwner<DataBlockNode>) override {}
    void writeElements(utils::json::encoder::Array&, MemoryPosition&, ElementPath&) override {}
    [[nodiscard]] double documentSize(std::size_t) const override { return 0; }

private:
    std::weak_ptr<TreeMemory> memory_;
    std::vector<bool>* memoryWasThere_;
};

DeclarationTree treeWithWitness(std::vector<bool>& memoryWasThere) {
    auto memory = std::make_shared<TreeMemory>();
    auto root = memory->make<RootNode>("root");
    root->addChild(memory->make<Witness>(memory, memoryWasThere));
    return {std::move(memory), std::move(root)};
}

TEST(DeclarationTree, EndsBeforeItsMemoryWhateverEndsIt) {
    std::vector<bool> memoryWasThere;
    {
        DeclarationTree assigned = treeWithWitness(memoryWasThere);
        assigned = treeWithWitness(memoryWasThere);
        DeclarationTree moved = std::move(assigned);
        EXPECT_EQ(memoryWasThere, (std::vector<bool>{true}));
        moved.reset();
        moved = treeWithWitness(memoryWasThere);
    }
    EXPECT_EQ(memoryWasThere, (std::vector<bool>{true, true, true}));
}

// A table takes as many names as it has room for, and the compiler counts them.
template <class... Names>
constexpr bool kMakeATable = requires(Names... names) { AttributeTable{names...}; };
static_assert(kMakeATable<std::string_view>);
static_assert(kMakeATable<std::string_view, std::string_view>);
static_assert(!kMakeATable<std::string_view, std::string_view, std::string_view>);

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
