#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// A project of two PLCs, edited by the verbs that edit.
class EditingTest : public testing::Test {
public:
    EditingTest() { place.write("P.json", project("DBW2", "true", "/PLC/Slow")); }

    static std::string project(const std::string& address, const std::string& writable,
                               const std::string& command) {
        return R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "h", "rack": 0, "slot": 0, "children": [
    {"@Skill.S7.Command": {"name": "Slow"}},
    {"@Skill.S7.Command": {"name": "Fast"}},
    {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 3, "children": [
      {"@Skill.S7.Item": {"name": "i", "dataType": "Int", "address": ")" +
               address + R"(", "writable": )" + writable + R"(, "command": ")" + command + R"("}}
    ]}}
  ]}},
  {"@Skill.S7.PLC": {"name": "Other", "address": "o", "rack": 200, "slot": 0}}
]}
)";
    }

    /// Expects a refusal that leaves the file as it is.
    void expectRefusal(const std::vector<std::string>& arguments, std::string_view message) {
        const auto before = place.read("P.json");
        EXPECT_EQ(place.run(arguments), failed(message));
        EXPECT_EQ(place.read("P.json"), before);
        EXPECT_EQ(place.files(), std::vector<std::string>{"P.json"});
    }

    Sandbox place;
};

} // namespace

TEST_F(EditingTest, SetsFieldsAsTheFormDoes) {
    EXPECT_EQ(place.run({"set", "P.json", "/PLC/b/i", "Address=DB7.DB20", "Writable=false",
                         "Command=/PLC/Fast"}),
              done());
    EXPECT_EQ(place.read("P.json"), project("DB20", "false", "/PLC/Fast"));
}

TEST_F(EditingTest, TakesValuesAsTheyAreStoredAndAsTheyAreShown) {
    EXPECT_EQ(place.run({"set", "P.json", "/PLC/b/i", "Data type=unsigned 64-bit integer",
                         "Writable=Read only", "Command="}),
              done());
    EXPECT_NE(place.read("P.json").find(R"("dataType": "ULInt", "address": "DBW2", )"
                                        R"("writable": false, "command": "")"),
              std::string::npos);
    EXPECT_EQ(place.run({"set", "P.json", "/PLC/b/i", "Data type=Byte", "Writable=Writable"}),
              done());
    EXPECT_NE(place.read("P.json").find(R"("dataType": "Byte", "address": "DBW2", )"
                                        R"("writable": true)"),
              std::string::npos);
}

TEST_F(EditingTest, SetsAFieldThatAnotherValueShows) {
    EXPECT_EQ(place.run({"set", "P.json", "/PLC/b/i", "String size=20", "Data type=WString"}),
              done());
    EXPECT_NE(place.read("P.json").find(R"("dataType": "WString", "stringSize": 20)"),
              std::string::npos);
}

TEST_F(EditingTest, RefusesWhatTheFormRefuses) {
    const auto set = [](const std::string& path, const std::string& value) {
        return std::vector<std::string>{"set", "P.json", path, value};
    };
    expectRefusal(set("/PLC", "Rack number=8"),
                  "/PLC: Rack number: the value must lie between 0 and 7");
    expectRefusal(set("/PLC", "Slot number=32"),
                  "/PLC: Slot number: the value must lie between 0 and 31");
    expectRefusal(set("/PLC/b", "DB number=0"),
                  "/PLC/b: DB number: the value must lie between 1 and 65535");
    for (const std::string text : {"0x3", "-1", "+1", " 1", "1.0", ""})
        expectRefusal(set("/PLC", "Rack number=" + text),
                      "/PLC: Rack number: “" + text + "” is not a decimal number");
    expectRefusal(
        set("/PLC/b/i", "Writable=yes"),
        "/PLC/b/i: Writable: “yes” is not one of the choices: false, true, Read only, Writable");
    expectRefusal(
        set("/PLC/b/i", "Data type=int"),
        "/PLC/b/i: Data type: “int” is not one of the choices: Bool, Byte, Word, DWord, LWord, "
        "SInt, USInt, Int, UInt, DInt, UDInt, LInt, ULInt, Real, LReal, String, WString");
    expectRefusal(set("/PLC/b/i", "Command=/PLC/b"),
                  "/PLC/b/i: Command: “/PLC/b” is not one of the elements that can be chosen");
    expectRefusal(set("/PLC/b/i", "String size=3"),
                  "/PLC/b/i: String size: the field is not shown now");
    expectRefusal(
        set("/PLC/b/i", "Effective address=DB3.DBW4"),
        "/PLC/b/i: Effective address: the field is shown for information and cannot be set");
    expectRefusal(set("/PLC", "Import DB File=x.db"),
                  "/PLC: Import DB File: a button has no value that could be set");
    expectRefusal(set("/PLC", "Rack=1"), "there is no field “Rack”; the fields are: Address, Rack "
                                         "number, Slot number, Import DB File");
    expectRefusal(set("/PLC/Slow", "Rack=1"),
                  "there is no field “Rack”; the element has no fields");
    expectRefusal(set("/No", "Rack number=1"), "the project has no element “/No”");
}

TEST_F(EditingTest, SetsAllFieldsOrNone) {
    expectRefusal({"set", "P.json", "/PLC", "Address=new", "Slot number=1", "Rack number=8"},
                  "/PLC: Rack number: the value must lie between 0 and 7");
}

TEST_F(EditingTest, LetsTheFileAloneWhereNothingChanges) {
    const std::string odd =
        R"({"elements":[{"@Skill.S7.PLC":{"name":"Q","rack":200}}],"corvane":1})";
    place.write("P.json", odd);
    EXPECT_EQ(place.run({"set", "P.json", "/Q", "Rack number=200"}), done());
    EXPECT_EQ(place.run({"rename", "P.json", "/Q", "Q"}), done());
    EXPECT_EQ(place.read("P.json"), odd);
}

TEST_F(EditingTest, AddsElements) {
    EXPECT_EQ(place.run({"add", "P.json", "/PLC/b", "Item", "speed/max"}),
              done("/PLC/b/speed~1max\n"));
    EXPECT_EQ(place.run({"add", "P.json", "/PLC/b", "@Skill.S7.Struct"}), done("/PLC/b/Struct\n"));
    EXPECT_EQ(place.run({"add", "P.json", "/PLC/b/Struct", "Item", "i"}),
              done("/PLC/b/Struct/i\n"));
    EXPECT_EQ(place.run({"add", "P.json", "/PLC/b", "Item", "i"}), done("/PLC/b/i 2\n"));
    EXPECT_EQ(place.run({"add", "P.json", "/", "PLC"}), done("/PLC 2\n"));
    EXPECT_EQ(place.printed({"show", "P.json", "/PLC/b", "--json"}),
              R"({"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 3, "children": [
  {"@Skill.S7.Item": {"name": "i", "dataType": "Int", "address": "DBW2", "writable": true, "command": "/PLC/Slow"}},
  {"@Skill.S7.Item": {"name": "speed/max", "dataType": "Byte", "address": "", "writable": false, "command": ""}},
  {"@Skill.S7.Struct": {"name": "Struct", "children": [
    {"@Skill.S7.Item": {"name": "i", "dataType": "Byte", "address": "", "writable": false, "command": ""}}
  ]}},
  {"@Skill.S7.Item": {"name": "i 2", "dataType": "Byte", "address": "", "writable": false, "command": ""}}
]}}
)");
}

TEST_F(EditingTest, RefusesToAddWhatCannotStandThere) {
    expectRefusal({"add", "P.json", "/PLC/b", "Command"},
                  "an element of the class “Command” cannot stand below “/PLC/b”");
    expectRefusal({"add", "P.json", "/", "Item"},
                  "an element of the class “Item” cannot stand at the top of a project");
    expectRefusal({"add", "P.json", "/PLC", "Valve"},
                  "there is no element class “Valve”; the classes are: PLC, Command, DataBlock, "
                  "Item, Struct");
    expectRefusal({"add", "P.json", "/PLC", "Item", "\xff"},
                  "the name “\xef\xbf\xbd” is not valid UTF-8");
}

TEST_F(EditingTest, CreatesAProjectOnlyAtItsTop) {
    expectRefusal({"add", "New.json", "/PLC", "Item"}, "New.json: No such file or directory");
    expectRefusal({"add", "New.json", "/", "Item"},
                  "an element of the class “Item” cannot stand at the top of a project");
    EXPECT_EQ(place.run({"add", "New.json", "/", "PLC", "Press"}), done("/Press\n"));
    EXPECT_EQ(place.printed({"show", "New.json"}),
              "Press  PLC  missing  Rack number 0  Slot number 0\n");
}

TEST_F(EditingTest, RenamesAndLetsReferencesFollow) {
    EXPECT_EQ(place.run({"rename", "P.json", "/PLC/Slow", "a/b"}), done());
    EXPECT_EQ(place.run({"rename", "P.json", "/PLC", "Press"}), done());
    EXPECT_NE(place.read("P.json").find(R"("command": "/Press/a~1b")"), std::string::npos);
    EXPECT_EQ(place.run({"check", "P.json"}).exitCode, 0);
}

TEST_F(EditingTest, RefusesNamesThatAreTakenOrNone) {
    expectRefusal({"rename", "P.json", "/PLC", "Other"},
                  "there is another element “Other” beside it");
    expectRefusal({"rename", "P.json", "/PLC", ""}, "a name must not be empty");
}

TEST_F(EditingTest, SaysWhatRefersToNothingAfterARemoval) {
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC/Fast"}), done());
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC/Slow"}),
              done("/PLC/b/i now refers to nothing: /PLC/Slow is gone\n"));
    EXPECT_EQ(place.run({"check", "P.json"}).exitCode, 1);
    EXPECT_NE(place.read("P.json").find(R"("command": "/PLC/Slow")"), std::string::npos);
    EXPECT_EQ(place.run({"add", "P.json", "/PLC", "Command", "Slow"}), done("/PLC/Slow\n"));
    EXPECT_EQ(place.run({"check", "P.json"}).exitCode, 0) << "it is found again";
    EXPECT_EQ(place.run({"remove", "P.json", "/PLC"}), done());
    EXPECT_EQ(place.printed({"show", "P.json"}), "Other  PLC  o  Rack number 200  Slot number 0\n");
    expectRefusal({"remove", "P.json", "/"}, "the project has no element “/”");
}

TEST_F(EditingTest, TellsWhatAnImportWouldChange) {
    const auto write = [&](std::string_view variables) {
        place.write("x.db", "DATA_BLOCK \"b\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n" +
                                std::string(variables) + "END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    };
    write("  speed : Int;\n");
    const std::vector<std::string> dryRun{"import", "x.db", "--project", "N.json", "--dry-run"};
    const std::string head = "Importing x.db into N.json, /PLC, would change: ";
    EXPECT_EQ(place.run(dryRun), done(head + "4 added, 0 updated, 0 renamed, 0 unchanged.\n"
                                             "added    /PLC\n"
                                             "added    /PLC/Default Command\n"
                                             "added    /PLC/b\n"
                                             "added    /PLC/b/speed\n",
                                      guessedNumber("x.db", "b", 1)));
    EXPECT_FALSE(place.has("N.json"));

    EXPECT_EQ(place.run({"import", "x.db", "--project", "N.json"}).exitCode, 0);
    EXPECT_EQ(place.run({"rename", "N.json", "/PLC/b", "old"}), done());
    const auto before = place.read("N.json");
    EXPECT_EQ(place.run(dryRun), done(head + "2 added, 0 updated, 0 renamed, 0 unchanged.\n"
                                             "added    /PLC/b\n"
                                             "added    /PLC/b/speed\n",
                                      guessedNumber("x.db", "b", 2)));
    EXPECT_EQ(place.run({"rename", "N.json", "/PLC/old", "b"}), done());
    write("  speed : Word;\n  level : Real;\n");
    EXPECT_EQ(place.run(dryRun), done(head + "1 added, 1 updated, 0 renamed, 1 unchanged.\n"
                                             "added    /PLC/b/level\n"
                                             "updated  /PLC/b/speed\n"));
    EXPECT_EQ(place.run({"rename", "N.json", "/PLC/b", "old"}), done());
    EXPECT_EQ(place.read("N.json"), before);

    EXPECT_EQ(place.run({"import", "x.db", "--dry-run"}).exitCode, 2) << "of which project?";
    EXPECT_EQ(
        place.run({"import", "x.db", "--project", "N.json", "--dry-run", "--document"}).exitCode,
        2);
}

} // namespace corvane::test
