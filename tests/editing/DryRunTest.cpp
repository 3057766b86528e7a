#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// What an import into a project of two PLCs would change. The first one's data blocks have
/// exchanged their names, so that an import exchanges them again.
class DryRunTest : public testing::Test {
public:
    DryRunTest() {
        place.write("P.json", kProject);
        place.write("a.db", dataBlock("DB1", "x : Int;") + dataBlock("DB2", "y : Int;"));
    }

    Result dryRun(const std::string& file, const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"import", file, "--project", "P.json", "--dry-run"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        auto result = place.run(arguments);
        EXPECT_EQ(place.read("P.json"), kProject);
        return result;
    }

    static constexpr std::string_view kProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "children": [
    {"@Skill.S7.Command": {"name": "c"}},
    {"@Skill.S7.DataBlock": {"name": "DB1", "DBNumber": 2, "children": [
      {"@Skill.S7.Item": {"name": "two", "dataType": "Int", "address": "DB0", "writable": true,
                          "command": "/PLC/c"}}]}},
    {"@Skill.S7.DataBlock": {"name": "DB2", "DBNumber": 1, "children": [
      {"@Skill.S7.Item": {"name": "one", "dataType": "Word", "address": "DB0", "writable": true,
                          "command": "/PLC/c"}}]}}]}},
  {"@Skill.S7.PLC": {"name": "Other", "address": "b"}}]})";

    Sandbox place;
};

} // namespace

TEST_F(DryRunTest, WhatIsRenamedIsNotUnchanged) {
    EXPECT_EQ(
        dryRun("a.db", {"--at", "/PLC"}),
        (Result{.exitCode = 0,
                .out = "Importing a.db into P.json, /PLC, would change: 0 added, 1 updated, 2 "
                       "renamed, 1 unchanged.\n"
                       "updated  /PLC/DB1/one\n"
                       "renamed  /PLC/DB1, was DB2\n"
                       "renamed  /PLC/DB2, was DB1\n",
                .err = "warning: /PLC/DB1: took the place of “DB2”, which the file calls "
                       "“DB1”; the first of 2 such elements\n"}));
}

TEST_F(DryRunTest, IntoTheElementThatIsNamed) {
    EXPECT_EQ(dryRun("a.db", {"--at", "/Other"}),
              done("Importing a.db into P.json, /Other, would change: 5 added, 0 updated, 0 "
                   "renamed, 0 unchanged.\n"
                   "added    /Other/Default Command\n"
                   "added    /Other/DB1\n"
                   "added    /Other/DB1/x\n"
                   "added    /Other/DB2\n"
                   "added    /Other/DB2/y\n"));
}

TEST_F(DryRunTest, IntoOneOfSeveral) {
    EXPECT_EQ(dryRun("a.db", {}),
              failed("several elements can import the file; name one with --at: /PLC /Other"));
}

TEST_F(DryRunTest, OfAFileThatCannotBeImported) {
    place.write("bad.db", "PROGRAM");
    EXPECT_EQ(dryRun("bad.db", {"--at", "/PLC"}),
              (Result{.exitCode = 1,
                      .out = {},
                      .err = "Error importing S7 data blocks from bad.db: Missing DATA_BLOCK "
                             "declaration \nbad.db:1:1\nPROGRAM\n^\n"}));
}

} // namespace corvane::test
