#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

class FormTest : public testing::Test {
protected:
    FormTest() {
        place.write("P.json", R"({"corvane": 1, "elements": [
            {"@Skill.S7.PLC": {"name": "PLC", "address": "", "rack": 9, "children": [
                {"@Skill.S7.Command": {"name": "A"}},
                {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 3, "children": [
                    {"@Skill.S7.Struct": {"name": "s", "children": [
                        {"@Skill.S7.Item": {"name": "t", "dataType": "String", "stringSize": 20,
                            "address": "DBB4", "writable": true, "command": "/PLC/B~1C"}}]}}]}},
                {"@Skill.S7.Command": {"name": "B/C"}},
                {"@Skill.S7.Item": {"name": "i", "dataType": "Quad", "address": "DB1.5"}}]}},
            {"@Skill.S7.PLC": {"name": "Other", "children": [
                {"@Skill.S7.Command": {"name": "Far"}}]}}]})");
    }

    std::string json(const std::string& path) const {
        return place.printed({"form", "P.json", path, "--json"});
    }

    /// The line of the row with this label, without its indentation.
    static std::string row(const std::string& text, const std::string& label) {
        const auto from = text.find("{\"label\": \"" + label + '"');
        return from == std::string::npos ? "" : text.substr(from, text.find('\n', from) - from);
    }

    static std::string stringSizeRow(const std::string& visible, const std::string& value) {
        return R"({"label": "String size", "description": "The number of characters in case the item is a String or WString", "help": "This field shows the number of characters in case the data item is a String or WString.", "editor": "spin", "visible": )" +
               visible + R"(, "value": )" + value +
               R"(, "error": null, "minimum": 0, "maximum": 254, "step": 1},)";
    }

public:
    Sandbox place;
};

} // namespace

TEST_F(FormTest, OfAPlc) {
    EXPECT_EQ(place.run({"form", "P.json", "/PLC"}),
              done("Address         [error: Please enter the network address of the target PLC]\n"
                   "Rack number     9\n"
                   "Slot number     0\n"
                   "Import DB File  imports .db files\n"));
    EXPECT_EQ(json("/PLC"),
              R"([
  {"label": "Address", "description": "The network address used by the S7 plc", "help": "This field shows the network address of the S7 plc.", "editor": "text", "visible": true, "value": "", "error": "Please enter the network address of the target PLC", "placeholder": "enter the address"},
  {"label": "Rack number", "description": "The rack number of the S7 plc", "help": "This field shows the rack number of the S7 plc.", "editor": "spin", "visible": true, "value": 9, "error": null, "minimum": 0, "maximum": 7, "step": 1},
  {"label": "Slot number", "description": "The slot number of the S7 plc", "help": "This field shows the slot number of the S7 plc.", "editor": "spin", "visible": true, "value": 0, "error": null, "minimum": 0, "maximum": 31, "step": 1},
  {"label": "Import DB File", "description": "This button allows you to import the data blocks defined in a .db file in structured text format. Such files can be exported from within the TIA Portal PLC programming environment, for example.", "help": "", "editor": "button", "visible": true, "value": null, "error": null, "extension": ".db"}
]
)");
}

TEST_F(FormTest, OfADataBlock) {
    EXPECT_EQ(place.run({"form", "P.json", "/PLC/b"}), done("DB number  3\n"));
    EXPECT_EQ(json("/PLC/b"),
              R"([
  {"label": "DB number", "description": "The DB number of the data block", "help": "This field shows the DB number of the data block.", "editor": "spin", "visible": true, "value": 3, "error": null, "minimum": 1, "maximum": 65535, "step": 1}
]
)");
}

TEST_F(FormTest, OfElementsWithoutProperties) {
    for (const std::string path : {"/PLC/A", "/PLC/b/s"}) {
        EXPECT_EQ(place.run({"form", "P.json", path}), done("The element has no properties.\n"));
        EXPECT_EQ(json(path), "[]\n");
    }
}

TEST_F(FormTest, OfAnItem) {
    EXPECT_EQ(place.run({"form", "P.json", "/PLC/b/s/t"}), done(R"(Data type          String
String size        20
Address            DBB4
Effective address  DB3.DBB4
Writable           true (Writable)
Command            /PLC/B~1C
)"));
    EXPECT_EQ(json("/PLC/b/s/t"),
              R"([
  {"label": "Data type", "description": "The data type for the data item", "help": "This field shows the data type used by the data item.", "editor": "choice", "visible": true, "value": "String", "error": null, "choices": [
    {"value": "Bool", "text": "Boolean"},
    {"value": "Byte", "text": "Byte"},
    {"value": "Word", "text": "Word"},
    {"value": "DWord", "text": "DWord"},
    {"value": "LWord", "text": "LWord"},
    {"value": "SInt", "text": "signed 8-bit integer"},
    {"value": "USInt", "text": "unsigned 8-bit integer"},
    {"value": "Int", "text": "signed 16-bit integer"},
    {"value": "UInt", "text": "unsigned 16-bit integer"},
    {"value": "DInt", "text": "signed 32-bit integer"},
    {"value": "UDInt", "text": "unsigned 32-bit integer"},
    {"value": "LInt", "text": "signed 64-bit integer"},
    {"value": "ULInt", "text": "unsigned 64-bit integer"},
    {"value": "Real", "text": "32-bit floating point"},
    {"value": "LReal", "text": "64-bit floating point"},
    {"value": "String", "text": "String"},
    {"value": "WString", "text": "WString"}
  ]},
  {"label": "String size", "description": "The number of characters in case the item is a String or WString", "help": "This field shows the number of characters in case the data item is a String or WString.", "editor": "spin", "visible": true, "value": 20, "error": null, "minimum": 0, "maximum": 254, "step": 1},
  {"label": "Address", "description": "The data item address", "help": "This field shows the address of the data item.", "editor": "text", "visible": true, "value": "DBB4", "error": null, "placeholder": ""},
  {"label": "Effective address", "description": "The effective address of the data item", "help": "This field shows the effective address of the data item.", "editor": "info", "visible": true, "value": "DB3.DBB4", "error": null},
  {"label": "Writable", "description": "The writable flag", "help": "This field shows if the data item is writable.", "editor": "flag", "visible": true, "value": true, "error": null, "choices": [
    {"value": false, "text": "Read only"},
    {"value": true, "text": "Writable"}
  ]},
  {"label": "Command", "description": "The data item command", "help": "This field shows the command attached to this data item.", "editor": "reference", "visible": true, "value": "/PLC/B~1C", "error": null, "candidates": [
    "/PLC/A",
    "/PLC/B~1C"
  ]}
]
)");
}

// A value that the editor does not offer is shown as it is; hidden controls are left out.
TEST_F(FormTest, OfAnItemWithProblems) {
    EXPECT_EQ(place.run({"form", "P.json", "/PLC/i"}),
              done("Data type  Quad\n"
                   "Address    DB1.5  [error: invalid address for a standalone data item, the "
                   "memory area marker must not be “DB”]\n"
                   "Writable   false (Read only)\n"
                   "Command    [error: please specify the command used to read and write the data "
                   "item]\n"));
    const auto text = json("/PLC/i");
    EXPECT_NE(text.find(R"("label": "String size",)"), std::string::npos);
    EXPECT_NE(text.find(R"("editor": "spin", "visible": false, "value": 254, "error": null,)"),
              std::string::npos);
    EXPECT_NE(text.find(R"("editor": "info", "visible": false, "value": "", "error": null})"),
              std::string::npos);
}

// As scripts read it: each row whole, with what is stored beyond the editors' limits.
TEST_F(FormTest, OfItemsWithProblemsRowByRow) {
    const auto text = json("/PLC/i");
    EXPECT_EQ(
        row(text, "Data type"),
        R"({"label": "Data type", "description": "The data type for the data item", "help": "This field shows the data type used by the data item.", "editor": "choice", "visible": true, "value": "Quad", "error": null, "choices": [)");
    EXPECT_EQ(row(text, "String size"), stringSizeRow("false", "254"));
    EXPECT_EQ(
        row(text, "Address"),
        R"({"label": "Address", "description": "The data item address", "help": "This field shows the address of the data item.", "editor": "text", "visible": true, "value": "DB1.5", "error": "invalid address for a standalone data item, the memory area marker must not be “DB”", "placeholder": ""},)");
    EXPECT_EQ(
        row(text, "Effective address"),
        R"({"label": "Effective address", "description": "The effective address of the data item", "help": "This field shows the effective address of the data item.", "editor": "info", "visible": false, "value": "", "error": null},)");
    EXPECT_EQ(
        row(text, "Writable"),
        R"({"label": "Writable", "description": "The writable flag", "help": "This field shows if the data item is writable.", "editor": "flag", "visible": true, "value": false, "error": null, "choices": [)");
    EXPECT_EQ(
        row(text, "Command"),
        R"({"label": "Command", "description": "The data item command", "help": "This field shows the command attached to this data item.", "editor": "reference", "visible": true, "value": "", "error": "please specify the command used to read and write the data item", "candidates": [)");
}

TEST_F(FormTest, ShowsTheStringSizeOfTextsAlone) {
    const auto project = [](const std::string& type, const std::string& size) {
        return R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "PLC", "children": [
            {"@Skill.S7.Item": {"name": "i", "dataType": ")" +
               type + R"(", "stringSize": )" + size + "}}]}}]}";
    };
    struct Case {
        std::string type;
        std::string size;
        std::string visible;
    };
    for (const auto& [type, size, visible] :
         {Case{"WString", "20", "true"}, Case{"WString", "0", "true"},
          Case{"String", "18446744073709551615", "true"}, Case{"Real", "20", "false"}}) {
        place.write("P.json", project(type, size));
        const auto text = json("/PLC/i");
        EXPECT_EQ(row(text, "String size"), stringSizeRow(visible, size));
        EXPECT_NE(row(text, "Data type").find(R"("value": ")" + type + "\","), std::string::npos);
    }
}

TEST_F(FormTest, ShowsStoredNumbersOutsideTheLimits) {
    place.write("P.json", R"({"corvane": 1, "elements": [
        {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "rack": 8, "slot": 32, "children": [
            {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 0}}]}}]})");
    const auto plc = json("/PLC");
    EXPECT_EQ(
        row(plc, "Rack number"),
        R"({"label": "Rack number", "description": "The rack number of the S7 plc", "help": "This field shows the rack number of the S7 plc.", "editor": "spin", "visible": true, "value": 8, "error": null, "minimum": 0, "maximum": 7, "step": 1},)");
    EXPECT_EQ(
        row(plc, "Slot number"),
        R"({"label": "Slot number", "description": "The slot number of the S7 plc", "help": "This field shows the slot number of the S7 plc.", "editor": "spin", "visible": true, "value": 32, "error": null, "minimum": 0, "maximum": 31, "step": 1},)");
    EXPECT_EQ(
        row(json("/PLC/b"), "DB number"),
        R"({"label": "DB number", "description": "The DB number of the data block", "help": "This field shows the DB number of the data block.", "editor": "spin", "visible": true, "value": 0, "error": null, "minimum": 1, "maximum": 65535, "step": 1})");
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
}

} // namespace corvane::test
