#include "ImportTesting.hpp"

#include "dbimport/DataBlockNumbering.hpp"
#include "dbimport/DataBlockReading.hpp"
#include "dbimport/context/ImportContext.hpp"
#include "dbimport/warnings/ImportFindings.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

std::optional<std::uint16_t> existingNumber(const ImportContext& context, const std::string& name) {
    const auto found = context.dbNumbers().find(name);
    return found == context.dbNumbers().end() ? std::nullopt : std::optional(found->second);
}

/// "NAME=NUMBER" of data blocks of these names, in one file.
std::string numbers(const std::vector<std::string>& names, const ImportContext& context = {}) {
    std::vector<DataBlockRecord> records;
    records.reserve(names.size());
    for (const std::string& name : names)
        records.push_back({name, existingNumber(context, name), nullptr});
    ImportFindings findings;
    numberDataBlocks(records, context, findings);
    std::string text;
    for (const DataBlockRecord& record : records)
        text += record.name + "=" + std::to_string(record.dbNumber.value()) + " ";
    return text;
}

TEST(DataBlockNumbering, NewBlocksComeBehindAllOthers) {
    EXPECT_EQ(numbers({"a", "b"}), "a=1 b=2 ");
    ImportContext context;
    context.addDataBlock("Old", 3);
    EXPECT_EQ(numbers({"Data", "DB7"}, context), "Data=8 DB7=7 ");
    EXPECT_EQ(numbers({"a", "DB2", "b"}, context), "a=4 DB2=2 b=5 ");
    EXPECT_EQ(context.maxExistingDbNumber(), 3);
}

TEST(DataBlockNumbering, ExistingBlocksKeepTheirNumber) {
    ImportContext context;
    context.addDataBlock("a", 9);
    context.addDataBlock("b", 4);
    EXPECT_EQ(numbers({"b", "c", "a"}, context), "b=4 c=10 a=9 ");
    EXPECT_EQ(numbers({"A"}, context), "A=10 ") << "names are case-sensitive";
}

TEST(DataBlockNumbering, ANumberInTheNameCounts) {
    ImportContext context;
    context.addDataBlock("DB12", 4);
    EXPECT_EQ(numbers({"DB12"}, context), "DB12=12 ");
    EXPECT_EQ(numbers({"DB12", "DB012"}), "DB12=12 DB012=12 ") << "collisions are left";
    EXPECT_EQ(numbers({"DB", "DB-5", "DB5x", "xDB5", "db5", "DB 5"}),
              "DB=1 DB-5=2 DB5x=3 xDB5=4 db5=5 DB 5=6 ");
}

TEST(DataBlockNumbering, NumbersAreSixteenBitsWide) {
    EXPECT_EQ(numbers({"DB65535", "a", "b"}), "DB65535=65535 a=0 b=1 ");
    EXPECT_EQ(numbers({"DB65536", "DB65543", "a"}), "DB65536=0 DB65543=7 a=8 ");
    EXPECT_EQ(numbers({"DB2147483647"}), "DB2147483647=65535 ");
    EXPECT_EQ(testing::errorOf([] { numbers({"DB2147483648"}); }), "stoi argument out of range");
    ImportContext context;
    context.addDataBlock("Old", 65535);
    EXPECT_EQ(numbers({"a", "b"}, context), "a=0 b=1 ");
}

TEST(DataBlockNumbering, TheFileSaysSo) {
    const auto source = [](const std::string& name) {
        return "DATA_BLOCK " + name +
               " {S7_Optimized_Access := FALSE} STRUCT END_STRUCT END_DATA_BLOCK ";
    };
    testing::PlcProject project;
    project.addDataBlock("b", 5);
    EXPECT_EQ(testing::import(source("a") + source("b") + source("db 70000"), project.plc()).text,
              R"([{"@Skill.S7.Command":{"name":"Default Command"}},)"
              R"({"@Skill.S7.DataBlock":{"name":"a","DBNumber":4465,"children":[]}},)"
              R"({"@Skill.S7.DataBlock":{"name":"b","DBNumber":5,"children":[]}},)"
              R"({"@Skill.S7.DataBlock":{"name":"DB70000","DBNumber":4464,"children":[]}}])");
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
