#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::test {

namespace {

/// What would make a terminal obey: the beginnings of commands in their short and long forms, and
/// what moves the cursor.
constexpr std::string_view kHostile = "\x1b[31m\r\n\t\x7f\u0085\u009b2J";
constexpr std::string_view kMasked = "?[31m??????2J";

const Sandbox::Surroundings kPlain{.variables = {"NO_COLOR=1"}, .output = {}};

std::string masked(std::string text) {
    for (auto at = text.find(kHostile); at != std::string::npos; at = text.find(kHostile))
        text.replace(at, kHostile.size(), kMasked);
    return text;
}

/// Whatever may come from outside has a hostile text in it; a pipe shall get it as it is, and a
/// terminal without its control characters.
class TerminalTest : public testing::Test {
public:
    TerminalTest() {
        place.write("P.json", R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": ")" + escape() +
                                  R"(", "address": ")" + escape() + R"(", "children": [
    {"@Skill.S7.Command": {"name": "c)" +
                                  escape() + R"("}},
    {"@Skill.S7.Item": {"name": "i", "dataType": ")" +
                                  escape() + R"(", "address": "MB0",
                        "command": "/)" +
                                  escape() + R"(/c)" + escape() + R"("}}]}}]})");
    }

    /// The hostile text as JSON has it.
    static std::string escape() { return R"(\u001b[31m\r\n\t\u007f\u0085\u009b2J)"; }

    /// Runs both ways, and returns what a pipe gets.
    Result expectBoth(const std::vector<std::string>& arguments) const {
        const auto piped = place.run(arguments);
        EXPECT_NE((piped.out + piped.err).find(kHostile), std::string::npos) << piped;
        EXPECT_EQ(place.runOnTerminal(arguments, kPlain), (Result{.exitCode = piped.exitCode,
                                                                  .out = masked(piped.out),
                                                                  .err = masked(piped.err)}));
        return piped;
    }

    const std::string hostile{kHostile};
    Sandbox place;
};

} // namespace

TEST_F(TerminalTest, ShowsTreesAndForms) {
    EXPECT_EQ(expectBoth({"show", "P.json"}).out, hostile + "  PLC  " + hostile +
                                                      "  Rack number 0  Slot number 0\n"
                                                      "  c" +
                                                      hostile +
                                                      "  Command\n"
                                                      "  i" +
                                                      std::string(13, ' ') + "  Data  " + hostile +
                                                      "  MB0\n");
    expectBoth({"form", "P.json", "/" + hostile});
    expectBoth({"form", "P.json", "/" + hostile + "/i"});
}

TEST_F(TerminalTest, ShowsProblems) {
    EXPECT_EQ(place.run({"remove", "P.json", "/" + hostile + "/c" + hostile}),
              done("/" + hostile + "/i now refers to nothing: /" + hostile + "/c" + hostile +
                   " is gone\n"));
    const auto problems = expectBoth({"check", "P.json"});
    EXPECT_EQ(problems.exitCode, 1);
}

TEST_F(TerminalTest, ShowsJsonOfManyLines) {
    // JSON writes most control characters as escapes; the others must not get through either.
    const auto piped = place.run({"show", "P.json", "--json"});
    const auto shown = place.runOnTerminal({"show", "P.json", "--json"}, kPlain);
    EXPECT_NE(piped.out.find("\x7f\u0085\u009b2J"), std::string::npos) << piped;
    EXPECT_NE(shown.out.find("\\r\\n\\t???2J"), std::string::npos) << shown;
    EXPECT_EQ(std::ranges::count(shown.out, '\n'), std::ranges::count(piped.out, '\n'));
}

TEST_F(TerminalTest, ShowsImports) {
    const auto file = hostile + ".db";
    const auto project = hostile + ".json";
    place.write(file, dataBlock("Data", "x : Bool;"));
    expectBoth({"import", file});
    expectBoth({"import", file, "--project", project, "--dry-run"});
    expectBoth({"import", file, "--project", "P.json", "--dry-run"});
    EXPECT_EQ(place.run({"import", file, "--project", project}).exitCode, 0);
    EXPECT_EQ(expectBoth({"import", file, "--project", project}).out,
              "Imported " + file + " into " + project +
                  ", /PLC: 0 elements added, 0 updated.\n\n"
                  "  Data Block  Data Item  Bytes\n"
                  "  Data                1      2\n"
                  "  1 in all            1      2\n");
}

TEST_F(TerminalTest, TellsWhatFailed) {
    const std::string bad = "bad" + hostile + ".db";
    place.write(bad, "PROGRAM");
    EXPECT_EQ(expectBoth({"import", bad}),
              (Result{.exitCode = 1,
                      .out = {},
                      .err = "Error importing S7 data blocks from " + bad +
                             ": Missing DATA_BLOCK declaration \n" + bad + ":1:1\nPROGRAM\n^\n"}));
    place.write("type.db", dataBlock("Data", "x : \"T\x1b[31m\";"));
    EXPECT_EQ(place.runOnTerminal({"import", "type.db"}).err.find('\x1b'), std::string::npos);

    EXPECT_EQ(expectBoth({"check", "none" + hostile}),
              failed("none" + hostile + ": No such file or directory"));
    expectBoth({"show", "P.json", "/none" + hostile});
    expectBoth({"add", "P.json", "/", "class" + hostile});
    EXPECT_EQ(expectBoth({"set", "P.json", "/" + hostile, hostile}),
              misused("“" + hostile + "” is not of the form LABEL=VALUE", "set"));
    EXPECT_EQ(expectBoth({"check", "P.json", hostile}),
              misused("The following argument was not expected: " + hostile, "check"));
    expectBoth({"plugins", "--plugin", "none" + hostile});
}

TEST_F(TerminalTest, NamesPlugins) {
    const auto file = "Wiring" + hostile + ".so";
    std::filesystem::create_symlink(testPlugins() / "Wiring.so", place.folder() / file);
    expectBoth({"plugins", "--plugin", file});
}

TEST_F(TerminalTest, IsColouredUnlessItShallNotBe) {
    place.write("P.json",
                R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "a\u001b"}}]})");
    EXPECT_EQ(place.runOnTerminal({"show", "P.json"}),
              done("\x1b[1ma?\x1b[0m  PLC  Rack number 0  Slot number 0\n"));
    EXPECT_EQ(place.run({"show", "P.json"}), done("a\x1b  PLC  Rack number 0  Slot number 0\n"));
}

// The path that `add` prints is one that every verb takes.
TEST_F(TerminalTest, NewNamesAreOneLine) {
    const auto before = place.read("P.json");
    const auto refusal = failed("the name must be one line without control characters");
    for (const std::string text : {"a\nb", "\t", "\x1b[1m", "\x7f", "\u0080", "x\u009f"}) {
        EXPECT_EQ(place.run({"add", "P.json", "/", "PLC", text}), refusal);
        EXPECT_EQ(place.run({"rename", "P.json", "/" + hostile, text}), refusal);
    }
    EXPECT_EQ(place.read("P.json"), before);
    EXPECT_EQ(place.run({"rename", "P.json", "/" + hostile, hostile}), done()) << "no change";
    EXPECT_EQ(place.run({"add", "P.json", "/" + hostile, "Command", "\u00a0"}),
              done("/" + hostile + "/\u00a0\n"));
    EXPECT_EQ(place.run({"rename", "P.json", "/" + hostile + "/\u00a0", "d"}), done());
}

} // namespace corvane::test
