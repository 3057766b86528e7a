#include "PrepareTesting.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <ostream>
#include <set>

// What is left out, where, why, and what would help; and that nothing of it is built.

namespace corvane::workbench::plugins::s7Driver::prepare {
namespace {

using testing::blockOf;
using testing::blockWith;
using testing::Files;
using testing::one;
using testing::typeOf;

struct Refusal {
    std::string name; ///< of the reason in Reasons.def
    Files files;
    std::vector<std::string> begins; ///< how each line begins
    Options options = {};
    Limits limits = {};

    friend std::ostream& operator<<(std::ostream& stream, const Refusal& refusal) {
        return stream << refusal.name;
    }
};

std::string chain(int types) {
    std::string text;
    for (int index = 0; index != types; ++index)
        text += typeOf("\"T" + std::to_string(index) + "\"",
                       "x : \"T" + std::to_string(index + 1) + "\";");
    return text + typeOf("\"T" + std::to_string(types) + "\"", "a : Byte;") +
           blockOf("x : \"T0\";");
}

// Each type holds ten of the next one: 10^20 bytes.
std::string billions() {
    std::string text;
    for (int index = 0; index != 20; ++index) {
        std::string members;
        for (int member = 0; member != 10; ++member)
            members += "m" + std::to_string(member) + " : \"T" + std::to_string(index + 1) + "\";";
        text += typeOf("\"T" + std::to_string(index) + "\"", members);
    }
    return text + typeOf("\"T20\"", "a : Byte;") + blockOf("x : \"T0\";");
}

std::vector<Refusal> refusalsOfBlocks() {
    const std::string plain = "STRUCT\na : Int;\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n";
    return {
        {"optimizedAccess",
         one("DATA_BLOCK \"A\"\n{ S7_Optimized_Access := 'TRUE' }\n" + plain),
         {"a.db:1:12: A: it has optimized access"},
         {.standardAccess = true, .constants = {}, .blocks = {}}},
        {"accessNotStated",
         one("DATA_BLOCK \"A\"\n" + plain),
         {"a.db:1:12: A: the source does not say which access it has; "}},
        {"typeMissing",
         one(blockOf("x : Array[1..2] of \"TrackData\";")),
         {"a.db:4:20: Data: needs type “TrackData”, which is in none of the files; name the file"}},
        {"functionBlockMissing",
         one(blockWith("FB 5")),
         {"a.db:3:1: Data: needs function block “FB5”"}},
        {"sizeUnknown",
         one(blockOf("x : R_TRIG;")),
         {"a.db:4:5: Data: the size of type “R_TRIG” is not known"}},
        {"containsItself",
         one(typeOf("\"T\"", "u : \"U\";") + typeOf("\"U\"", "t : Array[1..2] of \"T\";") +
             blockOf("x : \"T\";")),
         {"a.db:10:20: Data: type “T” contains itself; it is declared in a.db:1:6"}},
        {"declaredTwice",
         {{"a.db", blockOf("x : \"T\";") + typeOf("\"T\"", "a : Int;")},
          {"b.udt", typeOf("\"T\"", "a : Byte;")}},
         {"a.db:8:6: Data: “T” is declared with another content in b.udt:1:6",
          "b.udt:1:6: T: “T” is declared with another content in a.db:8:6"}},
        {"noStructure", one(blockWith("")), {"a.db:1:12: Data: “Data” has no structure"}},
        {"constantMissing",
         one(blockOf("x : Array[1..\"N\"] of Int;")),
         {"a.db:4:11: Data: needs the constant “N”"}},
        {"nameNotImportable",
         one(blockOf("\"end_struct\" : Int;")),
         {"a.db:4:1: Data: the import cannot tell the name “end_struct”"}},
        {"blockMissing",
         one(blockOf("a : Int;")),
         {"a.db:1:1: Nowhere: no data block “Nowhere”"},
         {.constants = {}, .blocks = {"Nowhere"}}},
        {"noDataBlock",
         one(typeOf("\"T\"", "a : Int;")),
         {"a.db:1:1: : the file declares no data block"}},
    };
}

std::vector<Refusal> refusalsOfTexts() {
    return {
        {"tooLarge", one(billions()), {"a.db:"}},
        {"tooDeep", one(chain(300)), {"a.db:"}},
        {"boundsOutOfOrder",
         one(blockOf("a : Array[3..1] of Int;")),
         {"a.db:4:11: Data: the bounds “3..1”"}},
        {"notANumber",
         one(blockOf("a : Array[1..99999999999] of Int;")),
         {"a.db:4:11: Data: “99999999999” is not a whole number"}},
        {"arrayOfArray",
         one(blockOf("a : Array[1..2] of Array[1..2] of Int;")),
         {"a.db:4:20: Data: an array of arrays"}},
        {"tooManyDimensions",
         one([] {
             std::string text = "a : Array[1..1";
             for (int index = 0; index != 64; ++index)
                 text += ", 1..1";
             return blockOf(text + "] of Int;");
         }()),
         {"a.db:4:395: Data: an array has more dimensions"}},
        {"expected",
         one(blockOf("a Int;") + typeOf("\"T\"", "a : Int")),
         {"a.db:4:3: Data: “:” is expected here", "a.db:12:1: T: “;” is expected here"}},
        {"endMissing",
         one("DATA_BLOCK \"A\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\na : Int;\n" +
             blockOf("b : Int;")),
         {"a.db:5:1: A: “END_STRUCT” is missing"}},
        {"commentOpen",
         one(blockOf("a : Int;") + "(* for ever"),
         {"a.db:8:1: : a comment begins here"}},
        {"notDeclared",
         one("Name;Address\n" + blockOf("a : Int;")),
         {"a.db:1:1: : “Name” begins no declaration"}},
        {"notText",
         one({'\xFF', '\xFE', 'D', '\0', 'A', '\0'}),
         {"a.db:1:1: : the file is no text"}},
    };
}

std::vector<Refusal> refusals() {
    auto all = refusalsOfBlocks();
    std::ranges::move(refusalsOfTexts(), std::back_inserter(all));
    return all;
}

class PrepareLeftOutTest : public ::testing::TestWithParam<Refusal> {};

TEST_P(PrepareLeftOutTest, IsToldWithPlaceReasonAndHelp) {
    const Refusal& refusal = GetParam();
    const auto prepared = prepareSources(refusal.files, refusal.options, refusal.limits);
    const std::vector<std::string> lines = testing::leftOutOf(refusal.files, prepared);
    for (std::size_t index = 0; index != refusal.begins.size(); ++index) {
        ASSERT_LT(index, lines.size());
        EXPECT_TRUE(lines[index].starts_with(refusal.begins[index])) << lines[index] << "\n"
                                                                     << refusal.begins[index];
    }
    for (const std::string& line : lines)
        EXPECT_FALSE(line.ends_with("; ")) << line;
}

INSTANTIATE_TEST_SUITE_P(Reasons, PrepareLeftOutTest, ::testing::ValuesIn(refusals()),
                         [](const auto& row) { return row.param.name; });

TEST(PrepareLeftOut, EveryReasonIsTested) {
    std::set<std::string> tested{"fileTooLarge"}; // which would take four gigabytes
    for (const Refusal& refusal : refusals())
        tested.insert(refusal.name);
#define S7_LEFT_OUT(name, reason, help) EXPECT_TRUE(tested.contains(#name)) << #name;
#include "prepare/Reasons.def"
#undef S7_LEFT_OUT
}

TEST(PrepareLeftOut, TheOtherBlocksGoOn) {
    const Files files = one("DATA_BLOCK \"A\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n"
                            "a : Nowhere;\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n" +
                            blockOf("b : Int;"));
    const auto prepared = prepareSources(files, {});
    EXPECT_EQ(prepared.leftOut.size(), 1U);
    EXPECT_EQ(testing::importedItems(prepared.text),
              (std::vector<std::string>{"Data {", "b Int DB0"}));
}

TEST(PrepareLeftOut, BlocksOfOneNameAreToldAtBothPlaces) {
    const Files files{{"a.db", blockOf("a : Int;")}, {"b.db", blockOf("a : Byte;")}};
    const auto prepared = prepareSources(files, {});
    EXPECT_EQ(prepared.text, "");
    EXPECT_EQ(prepared.leftOut.size(), 2U);
    const Files same{files[0], {"b.db", files[0].bytes}};
    EXPECT_EQ(prepareSources(same, {}).leftOut.size(), 0U);
    EXPECT_EQ(prepareSources(same, {}).text, prepareSources(std::span(same).first(1), {}).text);
}

TEST(PrepareLeftOut, EmptyArraysOfLargeTypesAreTooLarge) {
    std::string text;
    for (int index = 0; index != 40; ++index) {
        const std::string next = "\"T" + std::to_string(index + 1) + "\"";
        text += typeOf("\"T" + std::to_string(index) + "\"", std::string("a : Array[1..0] of ")
                                                                 .append(next)
                                                                 .append(";\nb : Array[1..0] of ")
                                                                 .append(next)
                                                                 .append(";"));
    }
    const Files files = one(text + typeOf("\"T40\"", "a : Byte;") + blockOf("x : \"T0\";"));
    const auto prepared = prepareSources(files, {});
    EXPECT_EQ(prepared.text, "");
    EXPECT_TRUE(testing::leftOutOf(files, prepared).at(0).contains("more variables"));
}

TEST(PrepareLeftOut, BlocksThatAreTooLargeTogetherAreLeftOutFromThereOn) {
    Limits limits;
    limits.import.elements = 12;
    const std::string block = blockOf("a : Array[1..5] of Int;");
    std::string second = block;
    second.replace(second.find("Data"), 4, "Next");
    const auto prepared = prepareSources(one(block + second), {}, limits);
    EXPECT_EQ(testing::importedItems(prepared.text).front(), "Data {");
    ASSERT_EQ(prepared.leftOut.size(), 1U);
    EXPECT_EQ(prepared.leftOut[0].name, "Next");
}

TEST(PrepareOrigins, LeadToTheLinesOfTheSources) {
    const Files files{{"a.db", blockOf("x : \"T\";\ny : Int;")},
                      {"T.udt", typeOf("\"T\"", "a : Int;\nb : Int;")}};
    const auto prepared = prepareSources(files, {});
    std::vector<std::pair<std::uint32_t, std::uint32_t>> places;
    places.reserve(prepared.origins.size());
    for (const ui::SourceOrigin& origin : prepared.origins)
        places.emplace_back(origin.file, origin.line);
    EXPECT_EQ(places, (std::vector<std::pair<std::uint32_t, std::uint32_t>>{{0, 1},
                                                                            {0, 1},
                                                                            {0, 1},
                                                                            {0, 4},
                                                                            {1, 4},
                                                                            {1, 5},
                                                                            {0, 4},
                                                                            {0, 5},
                                                                            {0, 5},
                                                                            {0, 5},
                                                                            {0, 5}}));
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::prepare
