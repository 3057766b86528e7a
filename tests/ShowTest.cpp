#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

constexpr std::string_view kProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "192.168.0.10", "rack": 0, "slot": 1, "children": [
    {"@Skill.S7.Command": {"name": "Default Command"}},
    {"@Skill.S7.DataBlock": {"name": "Data", "DBNumber": 5, "children": [
      {"@Skill.S7.Item": {"name": "a", "dataType": "Bool", "address": "DB0.0", "writable": true, "command": "/PLC/Default Command"}},
      {"@Skill.S7.Struct": {"name": "Größe", "children": [
        {"@Skill.S7.Item": {"name": "x/y~", "dataType": "WString", "stringSize": 20, "address": "DB2", "writable": false, "command": "/PLC/Default Command"}}
      ]}},
      {"@Skill.S7.Struct": {"name": "empty"}}
    ]}},
    {"@Skill.S7.Item": {"name": "counter", "dataType": "Word", "address": "MW20", "writable": false, "command": "/PLC/Gone"}},
    {"@Skill.S7.Item": {"name": "new\n\"item\"", "dataType": "Byte", "address": "", "writable": false, "command": ""}}
  ]}}
]}
)";

class ShowTest : public testing::Test {
protected:
    ShowTest() { place.write("P.json", kProject); }

public:
    Sandbox place;
};

} // namespace

TEST_F(ShowTest, PrintsTheTree) {
    EXPECT_EQ(place.run({"show", "P.json"}),
              done(R"(PLC  PLC  192.168.0.10  Rack number 0  Slot number 1
  Default Command  Command
  Data             DB    DB number 5
    a      Data  Bool  DB5.DB0.0
    Größe  Struct
      x/y~  Data  WString  DB5.DB2  String size 20
    empty  Struct
  counter          Data  Word  MW20
  new
"item"       Data  Byte
)"));
}

// A name of 41 columns is longer than the column is made for, one of 40 is not, be they of one byte
// a column or of more.
TEST_F(ShowTest, AlignsNamesUpToAWidth) {
    const std::string narrow(40, 'n');
    std::string wide;
    for (int i = 0; i != 40; ++i)
        wide += "ü";
    const auto command = [](const std::string& name) {
        return R"({"@Skill.S7.Command": {"name": ")" + name + R"("}})";
    };
    place.write("W.json", R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "PLC",
        "address": "x", "children": [)" +
                              command("a") + ", " + command("€uro") + ", " + command(narrow) +
                              ", " + command(wide) + ", " + command("-" + wide) + "]}}]}");
    EXPECT_EQ(place.run({"show", "W.json"}),
              done("PLC  PLC  x  Rack number 0  Slot number 0\n"
                   "  a" +
                   std::string(41, ' ') + "Command\n  €uro" + std::string(38, ' ') + "Command\n  " +
                   narrow + "  Command\n  " + wide + "  Command\n  -" + wide + "  Command\n"));
}

TEST_F(ShowTest, PrintsTheTreeOfOneElement) {
    EXPECT_EQ(place.run({"show", "P.json", "/PLC/Data/Größe"}), done(R"(Größe  Struct
  x/y~  Data  WString  DB5.DB2  String size 20
)"));
    EXPECT_EQ(place.run({"show", "P.json", "/PLC/counter"}), done("counter  Data  Word  MW20\n"));
}

TEST_F(ShowTest, PrintsWhatASaveWouldWrite) {
    EXPECT_EQ(place.run({"show", "P.json", "--json"}), done(kProject));
    EXPECT_EQ(place.run({"show", "--json", "P.json"}), done(kProject));
}

TEST_F(ShowTest, PrintsTheDocumentOfOneElement) {
    EXPECT_EQ(place.run({"show", "P.json", "/PLC/Data/Größe/x~1y~0", "--json"}),
              done(R"({"@Skill.S7.Item": {"name": "x/y~", "dataType": "WString", )"
                   R"("stringSize": 20, "address": "DB2", "writable": false, )"
                   R"("command": "/PLC/Default Command"}})"
                   "\n"));
    EXPECT_EQ(place.run({"show", "P.json", "/PLC/Data/Größe", "--json"}),
              done(R"({"@Skill.S7.Struct": {"name": "Größe", "children": [
  {"@Skill.S7.Item": {"name": "x/y~", "dataType": "WString", "stringSize": 20, "address": "DB2", "writable": false, "command": "/PLC/Default Command"}}
]}}
)"));
}

TEST_F(ShowTest, SaysThatThereIsNoSuchElement) {
    for (const std::string path : {"/PLC/Data/b", "/plc", "PLC", "//", "", "/PLC/", "/PLC/x/y~"})
        for (const std::string verb : {"show", "members", "form"})
            EXPECT_EQ(place.run({verb, "P.json", path}),
                      failed("the project has no element “" + path + "”"));
}

TEST_F(ShowTest, OfTheProjectByItsPath) {
    EXPECT_EQ(place.run({"show", "P.json", "/"}), place.run({"show", "P.json"}));
    EXPECT_EQ(place.run({"show", "P.json", "/", "--json"}), done(kProject));
    EXPECT_EQ(place.run({"form", "P.json", "/"}), failed("the project itself has no form"));
    EXPECT_EQ(place.run({"members", "P.json", "/"}),
              failed("the project itself publishes no attributes, events or tasks"));
}

TEST_F(ShowTest, OfAnEmptyProject) {
    place.write("E.json", R"({"elements":[],"corvane":1})");
    EXPECT_EQ(place.run({"show", "E.json"}), done());
    EXPECT_EQ(place.run({"show", "E.json", "--json"}),
              done("{\"corvane\": 1, \"elements\": []}\n"));
}

} // namespace corvane::test
