#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

constexpr std::string_view kTwoPlcs = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "North", "address": "10.0.0.1", "rack": 0, "slot": 1}},
  {"@Skill.S7.PLC": {"name": "South/East", "address": "10.0.0.2", "rack": 0, "slot": 1}}
]}
)";

/// The line with which a failed import begins: the plug-in's own text and nothing else. The blank
/// at its end belongs to it.
std::string errorLine(std::string_view file, std::string_view message) {
    return "Error importing S7 data blocks from " + std::string(file) + ": " +
           std::string(message) + " \n";
}

Result withHint(Result result, std::string_view hint) {
    result.err.append("hint: ").append(hint).append("\n");
    return result;
}

void copyMotorSource(const Sandbox& place) {
    copy_file(sources() / "motor_data.db", place.folder() / "motor.db");
}

std::string onlyShown(std::string_view file) {
    return "Imported " + std::string(file) +
           " into a new S7 Compatible PLC, which is only shown (--project FILE keeps it).\n\n";
}

} // namespace

TEST(Import, ShowsTheTreeWithTypesAndEffectiveAddresses) {
    const Sandbox place;
    copyMotorSource(place);
    EXPECT_EQ(place.run({"import", "motor.db"}),
              done(onlyShown("motor.db") +
                       R"(  Data Block  Data Item  Structure  Bytes
  Motor_Data          8          1     46
  1 in all            8          1     46

PLC  PLC  Rack number 0  Slot number 0
  Default Command  Command
  Motor_Data       DB  DB number 1
    Speed     Data  Int     DB1.DB0
    Running   Data  Bool    DB1.DB2.0
    Name      Data  String  DB1.DB4  String size 20
    Temps[0]  Data  Real    DB1.DB26
    Temps[1]  Data  Real    DB1.DB30
    Temps[2]  Data  Real    DB1.DB34
    Temps[3]  Data  Real    DB1.DB38
    Axis      Struct
      Pos  Data  DInt  DB1.DB42
)",
                   guessedNumber("motor.db", "Motor_Data", 1)));
    EXPECT_EQ(place.files(), std::vector<std::string>{"motor.db"});
}

TEST(Import, NamesAVariableThatHasNoName) {
    const Sandbox place;
    place.write("a.db",
                dataBlock("Data", "\"\" : Bool; x : Int; s : Struct \"\" : Real; END_STRUCT;"));
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    EXPECT_EQ(place.printed({"show", "P.json", "/PLC/Data"}), R"(Data  DB  DB number 1
  Unnamed  Data  Bool  DB1.DB0.0
  x        Data  Int   DB1.DB2
  s        Struct
    Unnamed  Data  Real  DB1.DB4
)");
}

TEST(Import, PrintsTheDocument) {
    const Sandbox place;
    copyMotorSource(place);
    const auto item = [](std::string_view name, std::string_view typeAndAddress, bool writable) {
        return R"({"@Skill.S7.Item":{"name":")" + std::string(name) + R"(","dataType":)" +
               std::string(typeAndAddress) + R"(","writable":)" + (writable ? "true" : "false") +
               R"(,"command":"Default Command"}})";
    };
    EXPECT_EQ(place.run({"import", "motor.db", "--document"}),
              done(R"([{"@Skill.S7.Command":{"name":"Default Command"}},)"
                   R"({"@Skill.S7.DataBlock":{"name":"Motor_Data","DBNumber":1,"children":[)" +
                       item("Speed", R"("Int","address":"DB0)", true) + "," +
                       item("Running", R"("Bool","address":"DB2.0)", false) + "," +
                       item("Name", R"("String","stringSize":20,"address":"DB4)", true) + "," +
                       item("Temps[0]", R"("Real","address":"DB26)", true) + "," +
                       item("Temps[1]", R"("Real","address":"DB30)", true) + "," +
                       item("Temps[2]", R"("Real","address":"DB34)", true) + "," +
                       item("Temps[3]", R"("Real","address":"DB38)", true) + "," +
                       R"({"@Skill.S7.Struct":{"name":"Axis","children":[)" +
                       item("Pos", R"("DInt","address":"DB42)", true) + "]}}]}}]\n",
                   guessedNumber("motor.db", "Motor_Data", 1)));
}

TEST(Import, LaysVariablesOutAsThePlcDoes) {
    const Sandbox place;
    place.write("mixed.db", kMixedSource);
    const auto warnings =
        "warning: mixed.db:17:7: Data: “h” is hidden (ExternalAccessible is False) "
        "and takes no memory in the import: from “z” on, the addresses are not "
        "those in the PLC\n" +
        guessedNumber("mixed.db", "Data", 1) +
        "warning: mixed.db:16:7: a variable gave no item, since items do not "
        "have its type: 1 DTL\n";
    const auto document = place.printed({"import", "mixed.db", "--document"}, warnings);
    EXPECT_EQ(listingOf(document), kMixedListing);

    const auto shown = place.printed({"import", "mixed.db"}, warnings);
    for (const std::string_view line :
         {"    s     Data  String   DB1.DB10  String size 10\n", "    st    Struct\n",
          "      x  Data  Bool  DB1.DB24.0\n",
          "    w     Data  WString  DB1.DB28  String size 254\n",
          "    z     Data  USInt    DB1.DB552\n", "  Data               13          1    554\n"})
        EXPECT_NE(shown.find(line), std::string::npos) << line << shown;
}

TEST(Import, SaysThatNamesAreNotUtf8) {
    const Sandbox place;
    place.write("latin.db", "DATA_BLOCK \"Beh\xE4lter\"\n{ S7_Optimized_Access := 'FALSE' }\n"
                            "STRUCT\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    const Result result = place.run({"import", "latin.db", "--document"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, guessedNumber("latin.db", "Beh\u00E4lter", 1) +
                              "warning: Beh\u00E4lter: names that are not UTF-8 were read as "
                              "Windows-1252: 1 in this data block, the first is "
                              "\u201CBeh\u00E4lter\u201D\n");
    EXPECT_NE(result.out.find("{\"name\":\"Beh\u00E4lter\",\"DBNumber\":1,"), std::string::npos);
}

TEST(Import, CreatesAProject) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool; st : Struct y : Int; END_STRUCT;"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json"}),
              done(R"(Imported a.db into P.json, /PLC: 6 elements added, 0 updated.

  Data Block  Data Item  Structure  Bytes
  Data                2          1      4
  1 in all            2          1      4
)",
                   guessedNumber("a.db", "Data", 1)));
    EXPECT_EQ(place.read("P.json"), R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "missing", "rack": 0, "slot": 0, "children": [
    {"@Skill.S7.Command": {"name": "Default Command"}},
    {"@Skill.S7.DataBlock": {"name": "Data", "DBNumber": 1, "children": [
      {"@Skill.S7.Item": {"name": "x", "dataType": "Bool", "address": "DB0.0", "writable": true, "command": "/PLC/Default Command"}},
      {"@Skill.S7.Struct": {"name": "st", "children": [
        {"@Skill.S7.Item": {"name": "y", "dataType": "Int", "address": "DB2", "writable": true, "command": "/PLC/Default Command"}}
      ]}}
    ]}}
  ]}}
]}
)");
    EXPECT_EQ(place.files(), (std::vector<std::string>{"P.json", "a.db"}));
}

TEST(Import, OfAFileWithoutDataBlocks) {
    const Sandbox place;
    place.write("empty.DB", "\xef\xbb\xbf  // nothing here\n");
    constexpr std::string_view kWarning = "warning: the file brought no data block\n";
    EXPECT_EQ(place.run({"import", "empty.DB", "--document"}),
              done("[{\"@Skill.S7.Command\":{\"name\":\"Default Command\"}}]\n", kWarning));
    EXPECT_EQ(place.run({"import", "empty.DB"}),
              done(onlyShown("empty.DB") + "Nothing to import was found in the file.\n\n"
                                           "PLC  PLC  Rack number 0  Slot number 0\n"
                                           "  Default Command  Command\n",
                   kWarning));
}

TEST(Import, IntoOneOfSeveral) {
    const Sandbox place;
    place.write("P.json", kTwoPlcs);
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json"}),
              failed("several elements can import the file; name one with --at: "
                     "/North /South~1East"));
    EXPECT_EQ(place.read("P.json"), kTwoPlcs);

    const auto report =
        place.printed({"import", "a.db", "--project", "P.json", "--at", "/South~1East"},
                      guessedNumber("a.db", "Data", 1));
    EXPECT_TRUE(report.starts_with(
        "Imported a.db into P.json, /South~1East: 3 elements added, 0 updated.\n\n"))
        << report;
    EXPECT_EQ(place.printed({"show", "P.json"}),
              R"(North       PLC  10.0.0.1  Rack number 0  Slot number 1
South/East  PLC  10.0.0.2  Rack number 0  Slot number 1
  Default Command  Command
  Data             DB  DB number 1
    x  Data  Bool  DB1.DB0.0
)");
    EXPECT_NE(place.read("P.json").find(R"("command": "/South~1East/Default Command")"),
              std::string::npos);
}

TEST(Import, NamesTheElementsToChooseFromAsTheyAre) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "a\u0007"}}, {"@Skill.S7.PLC": {"name": "b\u009b"}}]})");
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json"}),
              failed("several elements can import the file; name one with --at: /a\a /b\u009b"));
}

TEST(Import, TheDocumentForAProjectRefersToIt) {
    const Sandbox place;
    const std::string project = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "children": [
    {"@Skill.S7.Command": {"name": "Fast"}},
    {"@Skill.S7.DataBlock": {"name": "Old", "DBNumber": 3}}]}}]})";
    place.write("P.json", project);
    place.write("a.db", dataBlock("DB7", "x : Bool;") + dataBlock("Data", "y : Int;"));
    const auto item = [](std::string_view name, std::string_view typeAndAddress) {
        return R"({"@Skill.S7.Item":{"name":")" + std::string(name) + R"(","dataType":)" +
               std::string(typeAndAddress) + R"(","writable":true,"command":"/PLC/Fast"}})";
    };
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json", "--document"}),
              done(R"([{"@Skill.S7.DataBlock":{"name":"DB7","DBNumber":7,"children":[)" +
                       item("x", R"("Bool","address":"DB0.0)") +
                       R"(]}},{"@Skill.S7.DataBlock":{"name":"Data","DBNumber":8,"children":[)" +
                       item("y", R"("Int","address":"DB0)") + "]}}]\n",
                   guessedNumber("a.db", "Data", 8, 8)));
    EXPECT_EQ(place.read("P.json"), project);
    EXPECT_EQ(place.run({"import", "a.db", "--project", "New.json", "--document"}).exitCode, 0);
    EXPECT_FALSE(place.has("New.json"));
}

TEST(Import, WhatFailsSaysSoInThePlugInsOwnWordsAndChangesNothing) {
    const Sandbox place;
    place.write("good.db", dataBlock("Data", "x : Bool;"));
    static_cast<void>(place.printed({"import", "good.db", "--project", "P.json"},
                                    guessedNumber("good.db", "Data", 1)));
    const auto before = place.read("P.json");
    const std::vector<std::pair<std::string, std::string>> sources{
        {"DATA_BLOCK x", "Empty keyword not allowed"},
        {dataBlock("Data", "x : Bool; y : Quad;"),
         "Variable type not recognized or supported: quad"},
        {dataBlock("Data", "x : Int;") + dataBlock("Data", "x : Int;"),
         "Cannot have DB with the same name in the same .db file"},
        {dataBlock("New", "x : Int;") + "DATA_BLOCK \"Opt\"\nSTRUCT x : Int; END_STRUCT;\nBEGIN\n"
                                        "END_DATA_BLOCK",
         "S7 Optimized Access should be set to FALSE"},
        {dataBlock("New", "x : Int;") + dataBlock("DB99999999999", "x : Int;"),
         "stoi argument out of range"},
        {"PROGRAM", "Missing DATA_BLOCK declaration"},
    };
    for (const auto& [source, message] : sources) {
        place.write("bad.db", source);
        const auto expected = place.run({"import", "bad.db"});
        EXPECT_EQ(expected.exitCode, 1);
        EXPECT_EQ(expected.out, "");
        EXPECT_TRUE(expected.err.starts_with(errorLine("bad.db", message))) << expected;
        EXPECT_EQ(place.run({"import", "bad.db", "--document"}), expected);
        EXPECT_EQ(place.run({"import", "bad.db", "--project", "P.json"}), expected);
        EXPECT_EQ(place.run({"import", "bad.db", "--project", "New.json"}), expected);
        EXPECT_EQ(place.read("P.json"), before);
    }
    EXPECT_EQ(place.files(), (std::vector<std::string>{"P.json", "bad.db", "good.db"}));
}

TEST(Import, OfAFileThatCannotBeRead) {
    const Sandbox place;
    const auto missing = place.run({"import", "none.db"});
    EXPECT_EQ(missing.exitCode, 1);
    EXPECT_EQ(missing.out, "");
    EXPECT_TRUE(missing.err.starts_with(
        errorLine("none.db", "cannot open the file: No such file or directory")))
        << missing;
    std::filesystem::create_directory(place.folder() / "folder.db");
    const auto result = place.run({"import", "folder.db"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_TRUE(result.err.starts_with("Error importing S7 data blocks from folder.db: "))
        << result;
}

// The plug-in's text stays the first line, whatever else there is to say.
TEST(Import, AFailureComesBeforeThePlugInsThatCouldNotBeLoaded) {
    const Sandbox place;
    place.write("bad.db", "PROGRAM");
    auto expected = place.run({"import", "bad.db"});
    EXPECT_TRUE(expected.err.starts_with(errorLine("bad.db", "Missing DATA_BLOCK declaration")));
    expected.err += "corvane: plug-in none.so was not loaded: No such file or directory\n";
    EXPECT_EQ(place.run({"--plugin", "none.so", "import", "bad.db"}), expected);
}

TEST(Import, WhereItCannot) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    place.write("a.txt", "");
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    EXPECT_EQ(place.run({"import", "a.txt"}), failed("no loaded plug-in imports “.txt” files"));
    place.write("a", "");
    EXPECT_EQ(place.run({"import", "a"}), failed("no loaded plug-in imports “” files"));
    for (const std::string none : {"none.txt", "none", "none/a.txt"}) {
        const auto missing = withHint(failed(none + ": No such file or directory"),
                                      "there is no such file; check its name and its folder");
        EXPECT_EQ(place.run({"import", none}), missing);
        EXPECT_EQ(place.run({"import", none, "--project", "P.json", "--at", "/PLC"}), missing);
        EXPECT_EQ(place.run({"import", none, "--project", "New.json"}), missing);
    }
    EXPECT_FALSE(place.has("New.json"));
    std::filesystem::create_directory(place.folder() / "folder");
    EXPECT_EQ(place.run({"import", "folder"}),
              withHint(failed("no loaded plug-in imports “” files"),
                       "this is a folder; name a file in it"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json", "--at", "/PLC/Data"}),
              failed("/PLC/Data does not import “.db” files"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json", "--at", "/Q"}),
              failed(R"(the project has no element “/Q”)"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json", "--at", "PLC"}),
              failed(R"(the project has no element “PLC”)"));
}

} // namespace corvane::test
