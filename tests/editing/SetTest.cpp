#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// What `set` takes and refuses, up to the limits of each editor and one beyond.
class SetTest : public testing::Test {
public:
    SetTest() { place.write("P.json", kProject); }

    Result set(const std::string& path, const std::string& assignment) const {
        return place.run({"set", "P.json", path, assignment});
    }

    /// Expects that the file says so now.
    void expectSaved(const std::string& part) const {
        EXPECT_NE(place.read("P.json").find(part), std::string::npos) << part << "\n"
                                                                      << place.read("P.json");
    }

    void expectRefusal(const std::string& path, const std::string& assignment,
                       const std::string& message) const {
        const auto before = place.read("P.json");
        EXPECT_EQ(set(path, assignment), failed(message));
        EXPECT_EQ(place.read("P.json"), before);
    }

    static constexpr std::string_view kProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "h", "rack": 3, "slot": 3, "children": [
    {"@Skill.S7.Command": {"name": "c"}},
    {"@Skill.S7.DataBlock": {"name": "b", "DBNumber": 3, "children": [
      {"@Skill.S7.Struct": {"name": "s", "children": [
        {"@Skill.S7.Item": {"name": "t", "dataType": "String", "stringSize": 20, "address": "DBW2", "writable": true, "command": "/PLC/c"}}
      ]}}
    ]}}
  ]}}
]}
)";

    Sandbox place;
};

struct Limits {
    std::string path;
    std::string label;
    std::string member;
    std::vector<std::string> taken;
    std::vector<std::string> refused;
    std::string range;
};

} // namespace

TEST_F(SetTest, NumbersUpToTheirLimits) {
    const std::string huge = "18446744073709551616"; // one more than 64 bits hold
    const std::vector<Limits> rows{
        {"/PLC", "Rack number", "rack", {"7", "0"}, {"8", "256", huge}, "0 and 7"},
        {"/PLC", "Slot number", "slot", {"31", "0"}, {"32", "256", huge}, "0 and 31"},
        {"/PLC/b", "DB number", "DBNumber", {"65535", "1"}, {"65536", "0", huge}, "1 and 65535"},
        {"/PLC/b/s/t", "String size", "stringSize", {"254", "0"}, {"255", huge}, "0 and 254"},
    };
    for (const auto& row : rows) {
        for (const auto& number : row.taken) {
            EXPECT_EQ(set(row.path, row.label + "=" + number), done());
            expectSaved("\"" + row.member + "\": " + number);
        }
        for (const auto& number : row.refused)
            expectRefusal(row.path, row.label + "=" + number,
                          row.path + ": " + row.label + ": the value must lie between " +
                              row.range);
    }
}

TEST_F(SetTest, ADbNumberReachesTheItemsBelow) {
    EXPECT_EQ(set("/PLC/b", "DB number=77"), done());
    const auto form = place.printed({"form", "P.json", "/PLC/b/s/t", "--json"});
    EXPECT_NE(
        form.find(
            R"({"label": "Effective address", "description": "The effective address of the data item", "help": "This field shows the effective address of the data item.", "editor": "info", "visible": true, "value": "DB77.DBW2", "error": null},)"),
        std::string::npos)
        << form;
}

TEST_F(SetTest, AnEmptyAddress) {
    EXPECT_EQ(set("/PLC/b/s/t", "Address="), done());
    expectSaved(R"("address": "", "writable")");
    EXPECT_EQ(place.run({"check", "P.json"}),
              (Result{.exitCode = 1,
                      .out = "/PLC/b/s/t: Address: please enter the s7 memory address of the data "
                             "item\n1 problem found.\n",
                      .err = {}}));
    EXPECT_EQ(set("/PLC", "Address="), done());
    expectSaved(R"("name": "PLC", "address": "missing")"); // so that a loaded one has no problem
}

TEST_F(SetTest, RefusesTextsThatNoFieldTakes) {
    expectRefusal("/PLC", "Address=a\xff\x80",
                  "/PLC: Address: the value “a\xef\xbf\xbd\xef\xbf\xbd”"
                  " is not valid UTF-8");
    expectRefusal("/PLC/b/s/t", "Command=\xc3",
                  "/PLC/b/s/t: Command: the value “\xef\xbf\xbd” is "
                  "not valid UTF-8");
    for (const std::string text : {"a\nb", "\t", "\x1b[1m", "\x7f", "\u0080", "x\u009f"})
        expectRefusal("/PLC", "Address=" + text,
                      "/PLC: Address: the value must be one line without control characters");
    EXPECT_EQ(set("/PLC", "Address=\u00a0größe=1"), done()) << "next to them, and with a second =";
    expectSaved("\"address\": \"\u00a0größe=1\"");
}

// A document may hold what no editor offers. Naming it again changes nothing and is no fault.
TEST_F(SetTest, TheValueThatIsThereIsNoChange) {
    const std::string odd = R"({"elements":[
  {"@Skill.S7.PLC":{"name":"PLC","address":"a\tb","rack":200,"slot":255,"children":[
    {"@Skill.S7.DataBlock":{"name":"b","DBNumber":0}},
    {"@Skill.S7.Item":{"name":"i","dataType":"Foo","address":"DB3.DB4","writable":true,"command":"/PLC/gone"}},
    {"@Skill.S7.Item":{"name":"s","dataType":"String","stringSize":1000,"address":"MB0"}}]}}],"corvane":1})";
    place.write("P.json", odd);
    const std::vector<std::pair<std::string, std::string>> same{
        {"/PLC", "Address=a\tb"},        {"/PLC", "Rack number=200"},
        {"/PLC", "Slot number=255"},     {"/PLC/b", "DB number=0"},
        {"/PLC/i", "Data type=Foo"},     {"/PLC/i", "Address=DB3.DB4"},
        {"/PLC/i", "Writable=true"},     {"/PLC/i", "Writable=Writable"},
        {"/PLC/i", "Command=/PLC/gone"}, {"/PLC/s", "String size=1000"},
    };
    for (const auto& [path, assignment] : same)
        EXPECT_EQ(set(path, assignment), done());
    EXPECT_EQ(place.read("P.json"), odd);

    expectRefusal("/PLC/i", "Data type=foo",
                  "/PLC/i: Data type: “foo” is not one of the choices: Bool, Byte, Word, DWord, "
                  "LWord, SInt, USInt, Int, UInt, DInt, UDInt, LInt, ULInt, Real, LReal, String, "
                  "WString");
    expectRefusal("/PLC", "Rack number=201",
                  "/PLC: Rack number: the value must lie between 0 and 7");
    expectRefusal("/PLC/i", "Command=/PLC/lost",
                  "/PLC/i: Command: “/PLC/lost” is not one of the elements that can be chosen");
    expectRefusal(
        "/PLC/i", "Effective address=",
        "/PLC/i: Effective address: the field is shown for information and cannot be set");
}

TEST_F(SetTest, AWrongCommandLineIsToldBeforeTheProjectIsOpened) {
    EXPECT_EQ(place.run({"set", "none.json", "/PLC", "Rack number"}),
              misused("“Rack number” is not of the form LABEL=VALUE", "set"));
    EXPECT_EQ(place.run({"set", "none.json", "/PLC", "Slot number=1", "Slot number=2"}),
              misused("“Slot number” is given more than once", "set"));
    EXPECT_EQ(place.read("P.json"), kProject);
}

} // namespace corvane::test
