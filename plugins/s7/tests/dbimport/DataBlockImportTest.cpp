#include "ImportTesting.hpp"

#include "dbimport/DataBlockImport.hpp"
#include "dbimport/context/ImportContext.hpp"

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {
namespace {

namespace fs = std::filesystem;

/// A path for a file of this process: the tests of this program run side by side.
fs::path ownFile(std::string_view name) {
    return fs::path(::testing::TempDir()) / (std::to_string(::getpid()) + std::string(name));
}

class DataBlockImportTest : public ::testing::Test, protected testing::PlcProject {
protected:
    [[nodiscard]] std::string import(std::string_view source) const {
        return testing::import(source, plc()).text;
    }
};

TEST_F(DataBlockImportTest, APlcWithoutCommandGetsOne) {
    EXPECT_EQ(import(testing::dataBlock("x : Int;")),
              R"([{"@Skill.S7.Command":{"name":"Default Command"}},)"
              R"({"@Skill.S7.DataBlock":{"name":"Data","DBNumber":1,"children":[)"
              R"({"@Skill.S7.Item":{"name":"x","dataType":"Int","address":"DB0","writable":true,)"
              R"("command":"Default Command"}}]}}])");
    EXPECT_EQ(import("// nothing"), R"([{"@Skill.S7.Command":{"name":"Default Command"}}])");
}

TEST_F(DataBlockImportTest, TheFirstCommandIsTaken) {
    addCommand("A");
    addCommand("B");
    const ImportContext context = gatherImportContext(plc());
    EXPECT_FALSE(context.createDefaultCommand());
    EXPECT_EQ(context.defaultCommand().text(), "/PLC/A");
    EXPECT_EQ(import("// nothing"), "[]");
}

TEST_F(DataBlockImportTest, ACommandNamedDefaultCommandIsPreferred) {
    addCommand("A");
    addDataBlock("Data", 1);
    addCommand("Default Command");
    addCommand("B");
    EXPECT_EQ(gatherImportContext(plc()).defaultCommand().text(), "/PLC/Default Command");
}

TEST_F(DataBlockImportTest, TheDefaultCommandKeepsItsPlaceAsTheFirstToo) {
    addCommand("Default Command");
    addCommand("A");
    EXPECT_EQ(gatherImportContext(plc()).defaultCommand().text(), "/PLC/Default Command");
}

TEST_F(DataBlockImportTest, DataBlocksKeepTheirNumbers) {
    addDataBlock("Old", 3);
    const ImportContext context = gatherImportContext(plc());
    EXPECT_EQ(context.dbNumbers().size(), 1U);
    EXPECT_EQ(context.dbNumbers().at("Old"), 3);
    EXPECT_EQ(context.maxExistingDbNumber(), 3);
    const std::string tail =
        " {S7_Optimized_Access := FALSE} STRUCT END_STRUCT END_DATA_BLOCK DATA_BLOCK ";
    EXPECT_EQ(import("DATA_BLOCK Data" + tail + "DB7" + tail + "Old" + tail + "x END_DATA_BLOCK"),
              R"([{"@Skill.S7.Command":{"name":"Default Command"}},)"
              R"({"@Skill.S7.DataBlock":{"name":"Data","DBNumber":8,"children":[]}},)"
              R"({"@Skill.S7.DataBlock":{"name":"DB7","DBNumber":7,"children":[]}},)"
              R"({"@Skill.S7.DataBlock":{"name":"Old","DBNumber":3,"children":[]}}])");
}

TEST_F(DataBlockImportTest, ItemsKeepTheirCommands) {
    addCommand("A");
    model::Element& fast = addCommand("fast/1");
    model::Element& data = addDataBlock("Data", 5);
    addItem(data, "x", &fast);
    addItem(data, "none", nullptr);
    addItem(data, "flags[3]", &fast);
    model::Element& motors = addStruct(data, "motors[-1]");
    addItem(motors, "speed", &fast);
    addItem(addStruct(motors, "deep"), "er", &fast);
    addItem(plcElement(), "Data.y", &fast);

    const ImportContext context = gatherImportContext(plc());
    for (const std::string_view path :
         {"Data.x", "Data.flags[3]", "Data.motors[-1].speed", "Data.motors[-1].deep.er"})
        EXPECT_EQ(context.itemCommand(path).text(), "/PLC/fast~11") << path;
    EXPECT_EQ(context.itemCommand("Data.none").text(), "");
    EXPECT_EQ(context.itemCommands().size(), 1U);
    EXPECT_EQ(context.itemCommands().at("Data").find("Data.x")->text(), "/PLC/fast~11");
    EXPECT_EQ(context.itemCommands().at("Data").find("Data.y"), nullptr);
    for (const std::string_view path : {"Data.y", "Data.X", "x", "Data", "Other.x", "Data.motors"})
        EXPECT_EQ(context.itemCommand(path).text(), "/PLC/A") << path;

    const std::string item = R"({"@Skill.S7.Item":{"name":")";
    EXPECT_EQ(
        import(testing::dataBlock("x : Int; y : Int; none : Int; "
                                  "motors : Array[-1..0] of Struct speed : Int; END_STRUCT; "
                                  "flags : Array[3..4] of Bool;")),
        R"([{"@Skill.S7.DataBlock":{"name":"Data","DBNumber":5,"children":[)" + item +
            R"(x","dataType":"Int","address":"DB0","writable":true,"command":"/PLC/fast~11"}},)" +
            item + R"(y","dataType":"Int","address":"DB2","writable":true,"command":"/PLC/A"}},)" +
            item + R"(none","dataType":"Int","address":"DB4","writable":true,"command":""}},)" +
            R"({"@Skill.S7.Struct":{"name":"motors[-1]","children":[)" + item +
            R"(speed","dataType":"Int","address":"DB6","writable":true,"command":"/PLC/fast~11"}}]}},)" +
            R"({"@Skill.S7.Struct":{"name":"motors[0]","children":[)" + item +
            R"(speed","dataType":"Int","address":"DB8","writable":true,"command":"/PLC/A"}}]}},)" +
            item +
            R"(flags[3]","dataType":"Bool","address":"DB10.0","writable":true,"command":"/PLC/fast~11"}},)" +
            item +
            R"(flags[4]","dataType":"Bool","address":"DB10.1","writable":true,"command":"/PLC/A"}}]}}])");
}

TEST_F(DataBlockImportTest, ThePathIsSplitAtItsFirstDot) {
    addCommand("A");
    model::Element& fast = addCommand("B");
    addItem(addDataBlock("My.Data", 1), "x", &fast);
    addItem(addStruct(addDataBlock("My", 2), "Data"), "y", &fast);
    const ImportContext context = gatherImportContext(plc());
    EXPECT_EQ(context.itemCommand("My.Data.x").text(), "/PLC/A");
    EXPECT_EQ(context.itemCommand("My.Data.y").text(), "/PLC/B");
    EXPECT_TRUE(context.hasItemsBelow("My.Data"));
    EXPECT_FALSE(context.hasItemsBelow("Data"));
}

TEST_F(DataBlockImportTest, ManyItemsAreFound) {
    addCommand("A");
    model::Element& fast = addCommand("B");
    model::Element& data = addDataBlock("Data", 1);
    constexpr int kItems = 5000;
    for (int index = 0; index < kItems; ++index)
        addItem(data, "x[" + std::to_string(index) + "]", index % 3 == 0 ? &fast : nullptr);
    const ImportContext context = gatherImportContext(plc());
    for (int index = 0; index < kItems; ++index)
        EXPECT_EQ(context.itemCommand("Data.x[" + std::to_string(index) + "]").text(),
                  index % 3 == 0 ? "/PLC/B" : "");
    EXPECT_EQ(context.itemCommand("Data.x[5000]").text(), "/PLC/A");
}

/// Writes the file, imports it and takes it away again.
ImportResult importFile(const Plc& plc, const fs::path& file, std::string_view source) {
    std::ofstream(file, std::ios::binary) << source;
    auto result = importDataBlocks(plc, file);
    fs::remove(file);
    return result;
}

TEST_F(DataBlockImportTest, AFileIsReadLikeItsBytes) {
    const std::string source = testing::dataBlock("x : Int;");
    const auto result = importFile(plc(), ownFile("DataBlockImportTest.db"), source);
    ASSERT_TRUE(result);
    EXPECT_EQ(result->text, import(source));
}

TEST_F(DataBlockImportTest, FailuresAreTexts) {
    const auto missing = importDataBlocks(plc(), "/nowhere/to be found.db");
    ASSERT_FALSE(missing);
    EXPECT_TRUE(missing.error().text.starts_with(
        u"Error importing S7 data blocks from /nowhere/to be found.db: "));
    EXPECT_TRUE(missing.error().text.ends_with(u" "));

    const fs::path file = ownFile("twice.db");
    const auto twice = importFile(plc(), file, testing::dataBlock("") + testing::dataBlock(""));
    ASSERT_FALSE(twice);
    EXPECT_EQ(twice.error().text, u"Error importing S7 data blocks from " + file.u16string() +
                                      u": Cannot have DB with the same name in the same .db file ");
    EXPECT_TRUE(plcElement().childElements().empty());
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
