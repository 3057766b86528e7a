#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

std::string testPlugin(std::string_view name) {
    return (testPlugins() / (std::string(name) + ".so")).string();
}

std::string ownText() {
    return "S7  " + ownPlugin().string() + R"(
  PLC         S7 compatible plc
  Command     S7 command
  DataBlock   S7 data block
  Item        S7 data item
  Struct      S7 data structure
)";
}

std::string wiringText(std::string_view file) {
    return "Wiring  " + std::string(file) + R"(
  Rack        part of a wiring
  Box         part of a wiring
  Pin         part of a wiring
  Note        part of a wiring
)";
}

} // namespace

TEST(Plugins, ThoseBesideTheProgram) {
    const Sandbox place;
    EXPECT_EQ(place.run({"plugins"}), done(ownText()));
}

TEST(Plugins, AsJson) {
    const Sandbox place;
    EXPECT_EQ(place.run({"plugins", "--json"}), done(R"([
  {"skill": "S7", "uuid": "0f149f70-c1fe-4a32-a3d2-0ed86370f99a", "file": ")" +
                                                     ownPlugin().string() +
                                                     R"(", "classes": [
    {"name": "PLC", "uuid": "15728303-44fc-4684-8046-0d22967496f5", "description": "S7 compatible plc", "displayName": "S7 Compatible PLC", "shortName": "PLC", "classCode": 6, "topLevel": true, "accepts": [
      "Command",
      "DataBlock",
      "Item",
      "Struct"
    ]},
    {"name": "Command", "uuid": "a03a23c1-0557-4b69-8b0d-28c66a10696f", "description": "S7 command", "displayName": "Command", "shortName": "Command", "classCode": 10, "topLevel": false, "accepts": []},
    {"name": "DataBlock", "uuid": "2c8e6ca2-51c2-417f-8245-3212af20a29c", "description": "S7 data block", "displayName": "Data Block", "shortName": "DB", "classCode": 7, "topLevel": false, "accepts": [
      "Item",
      "Struct"
    ]},
    {"name": "Item", "uuid": "0ab0172a-3d1c-45bf-8581-f08e117f063d", "description": "S7 data item", "displayName": "Data Item", "shortName": "Data", "classCode": 2, "topLevel": false, "accepts": []},
    {"name": "Struct", "uuid": "acf337c0-c2d1-4a00-95f4-8a3c412cf35b", "description": "S7 data structure", "displayName": "Structure", "shortName": "Struct", "classCode": 9, "topLevel": false, "accepts": [
      "Item",
      "Struct"
    ]}
  ]}
]
)"));
}

TEST(Plugins, ThoseNamedByAnOption) {
    const Sandbox place;
    const auto wiring = testPlugin("Wiring");
    EXPECT_EQ(place.run({"plugins", "--plugin", wiring}), done(ownText() + wiringText(wiring)));
    EXPECT_EQ(place.run({"--plugin", ownPlugin().string(), "plugins"}), done(ownText()));
}

TEST(Plugins, ThoseInTheFoldersOfTheEnvironment) {
    const Sandbox place;
    std::filesystem::create_directory(place.folder() / "mine");
    std::filesystem::create_symlink(testPlugin("Wiring"), place.folder() / "mine/Wiring.so");
    place.write("mine/readme.txt", "not a plug-in");
    EXPECT_EQ(
        place.run({"plugins"}, {.variables = {"CORVANE_PLUGIN_PATH=none::mine:"}, .output = {}}),
        done(ownText() + wiringText("mine/Wiring.so")));
}

// One that cannot be loaded is reported, and the verb does its job with the others. Who named it
// learns from the exit code, too.
TEST(Plugins, BrokenOnesDisturbNoOther) {
    const Sandbox place;
    place.write("text.so", std::string(200, 'x'));
    const std::vector<std::pair<std::string, std::string>> broken{
        {testPlugin("MissingSymbol"), "undefined symbol: corvaneSymbolThatNobodyHas"},
        {testPlugin("NoSkill"), "it brings no skill"},
        {testPlugin("DuplicateName"),
         "the skill name “Wiring” is taken by " + testPlugin("Wiring")},
        {testPlugin("DuplicateUuid"),
         "the UUID of the skill “Impostor” is taken by " + testPlugin("Wiring")},
        {testPlugin("DuplicateClass"), "the element class “Thing” is registered twice"},
        {testPlugin("ThrowingException"), "the licence has ended"},
        {testPlugin("ThrowingNumber"), "it threw what is no exception"},
        {"none.so", "No such file or directory"},
        {"text.so", "invalid ELF header"},
    };
    std::vector<std::string> words{"plugins", "--plugin", testPlugin("Wiring")};
    std::string reports;
    for (const auto& [file, reason] : broken) {
        words.insert(words.end(), {"--plugin", file});
        reports.append("corvane: plug-in ").append(file);
        reports.append(" was not loaded: ").append(reason).append("\n");
    }
    EXPECT_EQ(place.run(words), (Result{.exitCode = 1,
                                        .out = ownText() + wiringText(testPlugin("Wiring")),
                                        .err = reports}));
}

TEST(Plugins, BrokenOnesThatNobodyNamedAreNoFailure) {
    const Sandbox place;
    std::filesystem::create_directory(place.folder() / "mine");
    place.write("mine/text.so", std::string(200, 'x'));
    EXPECT_EQ(
        place.run({"plugins"}, {.variables = {"CORVANE_PLUGIN_PATH=mine"}, .output = {}}),
        (Result{.exitCode = 0,
                .out = ownText(),
                .err = "corvane: plug-in mine/text.so was not loaded: invalid ELF header\n"}));
}

// The program knows no more of its own plug-in than of any other.
TEST(Plugins, ASecondOneIsServedLikeTheFirst) {
    const Sandbox place;
    const auto wiring = testPlugin("Wiring");
    place.write("a.wiring", R"([{"@Skill.Wiring.Box": {"name": "b", "id": "1", "children": [
        {"@Skill.Wiring.Pin": {"name": "p", "id": "2", "value": "v", "peer": "b"}}]}}])");
    EXPECT_EQ(place.run({"--plugin", wiring, "import", "a.wiring", "--project", "P.json"}).exitCode,
              0);
    EXPECT_EQ(place.read("P.json"), R"({"corvane": 1, "elements": [
  {"@Skill.Wiring.Rack": {"name": "Rack", "id": "", "children": [
    {"@Skill.Wiring.Box": {"name": "b", "id": "1", "children": [
      {"@Skill.Wiring.Pin": {"name": "p", "id": "2", "value": "v", "peer": "/Rack/b"}}
    ]}}
  ]}}
]}
)");
    EXPECT_EQ(place.run({"--plugin", wiring, "show", "P.json"}),
              done("Rack  Rack\n  b  Box\n    p  Pin  v\n"));
    EXPECT_EQ(place.run({"--plugin", wiring, "import", "none.wiring"}),
              (Result{.exitCode = 1, .out = {}, .err = "the wiring cannot read none.wiring\n"}));

    EXPECT_EQ(place.run({"show", "P.json"}),
              failed(R"(P.json: no loaded plug-in has the element class “@Skill.Wiring.Rack”)"));
}

} // namespace corvane::test
