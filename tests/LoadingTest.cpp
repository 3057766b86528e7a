#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string plc(std::string_view members) {
    return R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "PLC")" +
           (members.empty() ? "" : ", " + std::string(members)) + "}}]}";
}

std::string child(std::string_view document) {
    return plc(R"("children": [)" + std::string(document) + "]");
}

std::string item(std::string_view members) {
    return child(R"({"@Skill.S7.Item": {"name": "i")" +
                 (members.empty() ? "" : ", " + std::string(members)) + "}}");
}

std::string block(std::string_view members) {
    return child(R"({"@Skill.S7.DataBlock": {"name": "b")" +
                 (members.empty() ? "" : ", " + std::string(members)) + "}}");
}

/// What saving writes of the element at `path`.
std::string saved(const std::string& project, const std::string& path) {
    const Sandbox place;
    place.write("P.json", project);
    return place.printed({"show", "P.json", path, "--json"});
}

std::string errorOf(const std::string& project) {
    const Sandbox place;
    place.write("P.json", project);
    const auto result = place.run({"show", "P.json", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    constexpr std::string_view kHead = "corvane: P.json: ";
    EXPECT_TRUE(result.err.starts_with(kHead)) << result;
    EXPECT_TRUE(result.err.ends_with('\n')) << result;
    return result.err.substr(kHead.size(), result.err.size() - kHead.size() - 1);
}

} // namespace

TEST(Loading, OfAPlc) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", R"("address": "missing", "rack": 0, "slot": 0)"},
        {R"("hostName": "10.0.0.1")", R"("address": "10.0.0.1", "rack": 0, "slot": 0)"},
        {R"("address": "a", "hostName": "b")", R"("address": "b", "rack": 0, "slot": 0)"},
        {R"("hostName": "b", "address": "a")", R"("address": "a", "rack": 0, "slot": 0)"},
        {R"("address": "")", R"("address": "missing", "rack": 0, "slot": 0)"},
        {R"("slot": 255, "rack": 255)", R"("address": "missing", "rack": 255, "slot": 255)"},
        {R"("rack": 3.9)", R"("address": "missing", "rack": 3, "slot": 0)"},
        {R"("rack": 7e1, "slot": 0.9)", R"("address": "missing", "rack": 7, "slot": 0)"},
    };
    for (const auto& [members, expected] : cases)
        EXPECT_EQ(saved(plc(members), "/PLC"),
                  R"({"@Skill.S7.PLC": {"name": "PLC", )" + expected + "}}\n")
            << members;
}

TEST(Loading, OfADataBlock) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", "1"},
        {R"("DB number": 5)", "5"},
        {R"("DBNumber": 0)", "0"},
        {R"("DBNumber": 65535)", "65535"},
        {R"("DBNumber": 12.7)", "12"},
        {R"("DBNumber": 4, "DB number": 5)", "5"},
    };
    for (const auto& [members, number] : cases)
        EXPECT_EQ(saved(block(members), "/PLC/b"),
                  R"({"@Skill.S7.DataBlock": {"name": "b", "DBNumber": )" + number + "}}\n")
            << members;
}

TEST(Loading, OfAnItem) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"", R"("dataType": "Byte", "address": "", "writable": false, "command": "")"},
        {R"("bufferLength": 22, "dataType": "String")",
         R"("dataType": "String", "stringSize": 20, "address": "", "writable": false, )"
         R"("command": "")"},
        {R"("dataType": "WString", "bufferLength": 22)",
         R"("dataType": "WString", "stringSize": 20, "address": "", "writable": false, )"
         R"("command": "")"},
        {R"("dataType": "String", "bufferLength": 1)",
         R"("dataType": "String", "stringSize": 0, "address": "", "writable": false, )"
         R"("command": "")"},
        {R"("dataType": "String", "stringSize": 18446744073709551615)",
         R"("dataType": "String", "stringSize": 18446744073709551615, "address": "", )"
         R"("writable": false, "command": "")"},
        {R"("dataType": "Real", "stringSize": 20)",
         R"("dataType": "Real", "address": "", "writable": false, "command": "")"},
        {R"("address": "DB5.DB12", "writable": true)",
         R"("dataType": "Byte", "address": "DB12", "writable": true, "command": "")"},
        {R"("address": "DB5.DBX0.0")",
         R"("dataType": "Byte", "address": "DB5.DBX0.0", "writable": false, "command": "")"},
        {R"("dataType": "Quad", "command": "/PLC/none")",
         R"("dataType": "Quad", "address": "", "writable": false, "command": "/PLC/none")"},
    };
    for (const auto& [members, expected] : cases)
        EXPECT_EQ(saved(item(members), "/PLC/i"),
                  R"({"@Skill.S7.Item": {"name": "i", )" + expected + "}}\n")
            << members;
}

TEST(Loading, NamesTheMemberTheElementAndThePlaceOfAFault) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"{\"corvane\": 1,\n \"elements\": [\n  {\"@Skill.S7.PLC\": {\"name\": \"PLC\", "
         "\"rack\": 256}}]}",
         R"(element “/PLC”: member "rack": value out of range, expected 0 to 255 )"
         "(line 3, column 45)"},
        {plc(R"("slot": -1)"),
         R"(element “/PLC”: member "slot": value out of range, expected 0 to 255 )"
         "(line 1, column 71)"},
        {plc(R"("rack": "3")"),
         R"(element “/PLC”: member "rack": value out of range, expected 0 to 255 )"
         "(line 1, column 71)"},
        {plc(R"("address": 3)"),
         R"(element “/PLC”: member "address": expected a string, found a number )"
         "(line 1, column 74)"},
        {plc(R"("port": 102)"), R"(element “/PLC”: unknown member “port”)"},
        {plc(R"("Address": "a")"), R"(element “/PLC”: unknown member “Address”)"},
        {block(R"("DBNumber": 65536)"),
         R"(element “/PLC/b”: member "DBNumber": value out of range, expected 0 to 65535 )"
         "(line 1, column 126)"},
        {block(R"("DB Number": 1)"), R"(element “/PLC/b”: unknown member “DB Number”)"},
        {item(R"("stringSize": 18446744073709551616)"),
         R"(element “/PLC/i”: member "stringSize": value out of range, expected 0 to )"
         "18446744073709551615 (line 1, column 123)"},
        {item(R"("bufferLength": -2)"),
         R"(element “/PLC/i”: member "bufferLength": value out of range, expected 0 to )"
         "18446744073709551615 (line 1, column 125)"},
        {item(R"("writable": 1)"),
         R"(element “/PLC/i”: member "writable": expected a boolean, found a number )"
         "(line 1, column 121)"},
        {item(R"("effectiveAddress": "x")"),
         R"(element “/PLC/i”: unknown member “effectiveAddress”)"},
        {child(R"({"@Skill.S7.Struct": {"name": "s/t", "size": 2}})"),
         R"(element “/PLC/s~1t”: unknown member “size”)"},
        {child(R"({"@Skill.S7.Command": {"name": "c", "period": 2}})"),
         R"(element “/PLC/c”: unknown member “period”)"},
        {child(R"({"@Skill.S7.PLC": {"name": "c"}})"),
         R"(member "@Skill.S7.PLC": an element of this class cannot stand here (line 1, column 76))"},
        {R"({"corvane": 1, "elements": [{"@Skill.S7.Item": {"name": "i"}}]})",
         R"(member "@Skill.S7.Item": an element of this class cannot stand here (line 1, column 29))"},
        {R"({"corvane": 1, "elements": [{"@Skill.S8.PLC": {"name": "i"}}]})",
         R"(no loaded plug-in has the element class “@Skill.S8.PLC”)"},
        {R"({"version": 3})", R"(member "corvane": this is no corvane project (line 1, column 1))"},
        {R"({"corvane": 2, "elements": []})",
         R"(member "corvane": the project is of format 2, which is not known (line 1, column 1))"},
        {"Dear reader,", "malformed JSON: expected a value (line 1, column 1)"},
        {R"({"corvane": 1, "elements": [)",
         "malformed JSON: unexpected end of the text (line 1, column 29)"},
        {"{\"corvane\": 1, \"elements\": [{\"@Skill.S7.PLC\": {\"name\": \"\xff\"}}]}",
         "malformed JSON: the text is not UTF-8 (line 1, column 57)"},
    };
    for (const auto& [project, message] : cases)
        EXPECT_EQ(errorOf(project), message) << project;
}

TEST(Loading, OfAFileThatCannotBeRead) {
    const Sandbox place;
    std::filesystem::create_directory(place.folder() / "folder");
    const std::vector<std::vector<std::string>> verbs{
        {"show"}, {"check"}, {"members", "/PLC"}, {"form", "/PLC"}};
    for (auto words : verbs) {
        words.insert(words.begin() + 1, "none.json");
        EXPECT_EQ(place.run(words), failed("none.json: No such file or directory"));
        words[1] = "folder";
        EXPECT_EQ(place.run(words), failed("folder: Is a directory"));
    }
}

// Verbs that only look leave the file as it is, even where saving would write it differently.
TEST(Loading, ChangesNothing) {
    const Sandbox place;
    const auto project = plc(R"("hostName": "a", "rack": 3.9)");
    place.write("P.json", project);
    for (const std::vector<std::string>& words : {std::vector<std::string>{"show", "P.json"},
                                                  {"check", "P.json"},
                                                  {"form", "P.json", "/PLC"}})
        EXPECT_EQ(place.run(words).exitCode, 0);
    EXPECT_EQ(place.read("P.json"), project);
    EXPECT_EQ(place.files(), std::vector<std::string>{"P.json"});
}

TEST(Loading, SurvivesWhateverIsNested) {
    std::string deep =
        R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "P", "children": [)";
    std::string end = "]}}]}";
    for (int level = 0; level != 500; ++level) {
        deep += R"({"@Skill.S7.Struct": {"name": "s", "children": [)";
        end.insert(0, "]}}");
    }
    EXPECT_EQ(errorOf(deep + end), "elements are nested too deeply");
    EXPECT_EQ(errorOf(std::string(1'000'000, '[')).substr(0, 15), "malformed JSON:");
}

} // namespace corvane::test
