#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

bool contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

const std::vector<std::string> kVerbs{"import", "prepare", "show", "members", "check",  "map",
                                      "form",   "set",     "add",  "rename",  "remove", "plugins"};

} // namespace

TEST(Usage, HelpNamesEveryVerb) {
    const Sandbox place;
    for (const std::string option : {"--help", "-h"}) {
        const auto help = place.printed({option});
        EXPECT_TRUE(
            help.starts_with("Engineering workbench for automation projects\nUsage: corvane "))
            << help;
        for (const auto& verb : kVerbs)
            EXPECT_TRUE(contains(help, "\n  " + verb + " ")) << verb;
        EXPECT_TRUE(contains(help, "\n  --plugin FILE ")) << help;
        EXPECT_TRUE(contains(help, "CORVANE_PLUGIN_PATH")) << help;
    }
}

TEST(Usage, EveryVerbHasItsHelp) {
    const Sandbox place;
    for (const auto& verb : kVerbs) {
        const auto help = place.printed({verb, "--help"});
        EXPECT_TRUE(contains(help, "\nUsage: corvane " + verb + " [OPTIONS]")) << help;
    }
    EXPECT_TRUE(contains(place.printed({"import", "--help"}),
                         "  --project PROJECT           Import into this project and save it; it "
                         "is created if it does not exist\n"));
}

TEST(Usage, Version) {
    const Sandbox place;
    EXPECT_EQ(place.run({"--version"}), done("corvane " CORVANE_VERSION "\n"));
}

struct Misuse {
    std::vector<std::string> arguments;
    std::string message;
    std::string verb;
};

TEST(Usage, AWrongCommandLineIsToldFromAFailedJob) {
    const Sandbox place;
    const std::vector<Misuse> misuses{
        {{}, "A subcommand is required", ""},
        {{"imprt"}, "The following argument was not expected: imprt", ""},
        {{"--bogus"}, "The following argument was not expected: --bogus", ""},
        {{"import"}, "FILE is required", "import"},
        {{"import", "a.db", "b.db"}, "The following argument was not expected: b.db", "import"},
        {{"import", "a.db", "--at", "/PLC"}, "--at requires --project", "import"},
        {{"import", "a.db", "--project"}, "--project: 1 required TEXT missing", "import"},
        {{"import", "a.db", "--text"}, "The following argument was not expected: --text", "import"},
        {{"import", "a.db", "--match", "name"}, "--match requires --project", "import"},
        {{"import", "a.db", "--remove-missing"}, "--remove-missing requires --project", "import"},
        {{"import", "a.db", "--verbose"}, "--verbose requires --project", "import"},
        {{"import", "a.db", "--project", "P.json", "--match", "number"},
         "--match: “number” is neither \"address\" nor \"name\"",
         "import"},
        {{"show"}, "PROJECT is required", "show"},
        {{"show", "P.json", "/PLC", "x"}, "The following argument was not expected: x", "show"},
        {{"members"}, "PROJECT is required", "members"},
        {{"members", "P.json"}, "PATH is required", "members"},
        {{"check"}, "PROJECT is required", "check"},
        {{"check", "P.json", "/PLC"}, "The following argument was not expected: /PLC", "check"},
        {{"map", "P.json"}, "PATH is required", "map"},
        {{"map", "P.json", "/PLC", "--width", "12"}, "--width: “12” is neither 8 nor 16", "map"},
        {{"map", "P.json", "/PLC", "--output"}, "--output: 1 required TEXT missing", "map"},
        {{"form"}, "PROJECT is required", "form"},
        {{"form", "P.json"}, "PATH is required", "form"},
        {{"import", "a.db", "--dry-run"}, "--dry-run requires --project", "import"},
        {{"import", "a.db", "--project", "P.json", "--dry-run", "--document"},
         "--document excludes --dry-run",
         "import"},
        {{"set", "P.json", "/PLC"}, "LABEL=VALUE is required", "set"},
        {{"set", "P.json", "/PLC", "Address=a", "Rack number"},
         "“Rack number” is not of the form LABEL=VALUE",
         "set"},
        {{"set", "P.json", "/PLC", "Rack number=1", "Address=a", "Rack number=1"},
         "“Rack number” is given more than once",
         "set"},
        {{"add", "P.json", "/"}, "CLASS is required", "add"},
        {{"rename", "P.json", "/PLC"}, "NAME is required", "rename"},
        {{"remove", "P.json"}, "PATH is required", "remove"},
        {{"plugins", "x"}, "The following argument was not expected: x", "plugins"},
        {{"plugins", "--plugin"}, "--plugin: 1 required TEXT missing", "plugins"},
    };
    for (const auto& [arguments, message, verb] : misuses)
        EXPECT_EQ(place.run(arguments), misused(message, verb));
    EXPECT_TRUE(place.files().empty());
}

// Each option takes one file, so that what follows it is the verb's own.
TEST(Usage, AnOptionBeforeAnArgumentLeavesTheArgumentAlone) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": []})");
    const auto plugin = ownPlugin().string();
    EXPECT_EQ(place.run({"--plugin", plugin, "check", "P.json"}), done("No problems found.\n"));
    EXPECT_EQ(place.run({"check", "--plugin", plugin, "P.json"}), done("No problems found.\n"));
    EXPECT_EQ(place.run({"check", "--plugin", plugin, "--plugin", plugin, "P.json", "--json"}),
              done("[]\n"));
}

TEST(Usage, AMissingReaderOfTheOutputIsAFailure) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": []})");
    place.write("a.db", dataBlock("DB1", ""));
    const std::vector<std::vector<std::string>> jobs{
        {"check", "P.json"},          {"check", "P.json", "--json"},
        {"show", "P.json", "--json"}, {"plugins"},
        {"import", "a.db"},           {"import", "a.db", "--document"}};
    for (const auto& arguments : jobs) {
        const auto result = place.run(arguments, {.variables = {}, .output = "/dev/full"});
        EXPECT_EQ(result, failed("cannot write the file: No space left on device"));
    }
}

// The exit code says that the job failed, and the project is saved all the same.
TEST(Usage, AMissingReaderOfTheOutputIsToldApartFromAProjectThatWasNotSaved) {
    const Sandbox place;
    place.write("a.db", dataBlock("DB1", "x : Bool;"));
    const std::vector<std::vector<std::string>> jobs{{"import", "a.db", "--project", "P.json"},
                                                     {"add", "P.json", "/", "PLC", "Other"}};
    for (const auto& arguments : jobs) {
        const auto result = place.run(arguments, {.variables = {}, .output = "/dev/full"});
        EXPECT_EQ(result,
                  failed("cannot write the file: No space left on device; P.json was saved"));
    }
    const auto tree = place.printed({"show", "P.json"});
    EXPECT_NE(tree.find("Other"), std::string::npos);
    EXPECT_NE(tree.find("DB1"), std::string::npos);
}

} // namespace corvane::test
