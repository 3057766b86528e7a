#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvane::test {

namespace {

/// A plant that is imported, changed in the project, changed in the file in ten ways, and imported
/// again.
class WeeklyImportTest : public testing::Test {
public:
    WeeklyImportTest() {
        place.write("old.db",
                    dataBlock("Line", "Speed : Int;\n"
                                      "Level : Real;\n"
                                      "Name : String[20];\n"
                                      "Motor : Struct Run : Bool; Temp : Int; END_STRUCT;\n"
                                      "Temps : Array[0..1] of Real;\n"
                                      "Gone : Word;\n"
                                      "Old : Struct a : Bool; END_STRUCT;\n"
                                      "Last : Int;") +
                        dataBlock("Valve", "Open : Bool; Pressure : Real;"));
        place.write("new.db",
                    dataBlock("Line", "Extra : DInt;\n"
                                      "Speed : UInt;\n"
                                      "Height : Real;\n"
                                      "Name : String[40];\n"
                                      "Motor : Struct Run : Bool; Temp : Int; Amps : Real; "
                                      "END_STRUCT;\n"
                                      "Temps : Array[0..2] of Real;\n"
                                      "Last { ExternalWritable := 'False' } : Int;") +
                        dataBlock("Valve", "Open : Bool; "
                                           "Pressure { ExternalAccessible := 'False' } : Real;") +
                        dataBlock("New", "n : Int;"));
        static_cast<void>(
            place.printed({"import", "old.db", "--project", "P.json"},
                          "warning: old.db:1:12: 2 block numbers are not in the file and were "
                          "guessed: “Line” got 1, “Valve” got 2\n"));
        static_cast<void>(place.printed({"add", "P.json", "/PLC", "Command", "Fast"}));
        static_cast<void>(place.printed({"set", "P.json", "/PLC/Line/Last", "Command=/PLC/Fast"}));
        before = place.read("P.json");
    }

    std::string import(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"import", "new.db", "--project", "P.json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto result = place.run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result;
        return result.out;
    }

    Sandbox place;
    std::string before;
};

/// The lines behind the first one, up to an empty one.
std::string detailsOf(const std::string& text) {
    const auto first = text.find('\n') + 1;
    const auto end = text.find("\n\n");
    return end == std::string::npos ? text.substr(first) : text.substr(first, end + 1 - first);
}

constexpr std::string_view kByName = R"(added    /PLC/Line/Motor/Amps
added    /PLC/Line/Extra
added    /PLC/Line/Height
added    /PLC/Line/Temps[2]
added    /PLC/New
added    /PLC/New/n
moved    /PLC/Line/Speed
           dataType: "Int" -> "UInt"
           address: "DB0" -> "DB4"
moved    /PLC/Line/Name
           stringSize: 20 -> 40
           address: "DB6" -> "DB10"
moved    /PLC/Line/Motor/Run
           address: "DB28.0" -> "DB52.0"
moved    /PLC/Line/Motor/Temp
           address: "DB30" -> "DB54"
moved    /PLC/Line/Temps[0]
           address: "DB32" -> "DB60"
moved    /PLC/Line/Temps[1]
           address: "DB36" -> "DB64"
moved    /PLC/Line/Last
           address: "DB44" -> "DB72"
           writable: true -> false
removed  /PLC/Line/Level
removed  /PLC/Line/Gone
removed  /PLC/Line/Old
removed  /PLC/Line/Old/a
removed  /PLC/Valve/Pressure
)";

// What the PLC has under a name must be what the project has under it.
constexpr std::string_view kByAddress = R"(added    /PLC/Line/Motor/Run 2
added    /PLC/Line/Motor/Temp 2
added    /PLC/Line/Motor/Amps
added    /PLC/Line/Speed 2
added    /PLC/Line/Name 2
added    /PLC/Line/Temps[0] 2
added    /PLC/Line/Temps[1] 2
added    /PLC/Line/Temps[2]
added    /PLC/Line/Last 2
added    /PLC/New
added    /PLC/New/n
updated  /PLC/Line/Speed
           dataType: "Int" -> "DInt"
updated  /PLC/Line/Name
           dataType: "String" -> "Real"
           stringSize: 20 -> none
missing  /PLC/Line/Motor/Run
missing  /PLC/Line/Motor/Temp
missing  /PLC/Line/Level
missing  /PLC/Line/Temps[0]
missing  /PLC/Line/Temps[1]
missing  /PLC/Line/Gone
missing  /PLC/Line/Old
missing  /PLC/Line/Old/a
missing  /PLC/Line/Last
missing  /PLC/Valve/Pressure
)";

} // namespace

TEST_F(WeeklyImportTest, TheDryRunNamesEachChange) {
    const std::string head = "Importing new.db into P.json, /PLC, would change: ";
    EXPECT_EQ(import({"--dry-run", "--verbose"}),
              head + "11 added, 2 updated, 0 renamed, 4 unchanged, 10 missing.\n" +
                  std::string(kByAddress));
    const auto byName = import({"--dry-run", "--verbose", "--match", "name", "--remove-missing"});
    EXPECT_EQ(byName, head + "6 added, 0 updated, 7 moved, 0 renamed, 5 removed, 4 unchanged.\n" +
                          std::string(kByName));
    EXPECT_EQ(place.read("P.json"), before);

    // What is only missing stays, and its line differs in nothing else.
    std::string kept(kByName);
    for (auto at = kept.find("removed"); at != std::string::npos; at = kept.find("removed"))
        kept.replace(at, 7, "missing");
    EXPECT_EQ(detailsOf(import({"--dry-run", "--verbose", "--match", "name"})), kept);
    EXPECT_EQ(import({"--dry-run", "--match", "address"}), import({"--dry-run"}));
    EXPECT_EQ(place.read("P.json"), before);
}

TEST_F(WeeklyImportTest, TheReportNamesWhatTheDryRunNamed) {
    const auto report = import({"--match", "name", "--remove-missing", "--verbose"});
    EXPECT_TRUE(
        report.starts_with("Imported new.db into P.json, /PLC: 6 elements added, 0 updated, "
                           "7 moved, 5 removed.\n"))
        << report;
    EXPECT_EQ(detailsOf(report), kByName);

    const auto once = place.read("P.json");
    EXPECT_TRUE(import({"--match", "name", "--remove-missing"})
                    .starts_with("Imported new.db into P.json, /PLC: 0 elements added, 0 "
                                 "updated.\n"));
    EXPECT_TRUE(import({}).starts_with("Imported new.db into P.json, /PLC: 0 elements added, 0 "
                                       "updated.\n"));
    EXPECT_EQ(place.read("P.json"), once);
}

// What the file says of a name is what the project says of it, and what is the user's is kept.
TEST_F(WeeklyImportTest, ByNameEveryItemMeansWhatTheFileMeans) {
    const auto sorted = [](std::vector<std::string> lines) {
        std::ranges::sort(lines);
        return lines;
    };
    const auto wanted = sorted(listingOf(import({"--document"})));
    EXPECT_EQ(wanted.size(), 13U);
    import({"--match", "name", "--remove-missing"});
    EXPECT_EQ(sorted(listingOfProject(place.read("P.json"))), wanted);
    EXPECT_NE(place.read("P.json").find(R"("name": "Last", "dataType": "Int", "address": "DB72", )"
                                        R"("writable": false, "command": "/PLC/Fast")"),
              std::string::npos);
    EXPECT_EQ(place.run({"check", "P.json"}).out.find("Line"), std::string::npos);
}

TEST_F(WeeklyImportTest, WarnsOfNamesThatLieByAddressOnly) {
    const auto warnings = [&](const std::vector<std::string>& more) {
        std::vector<std::string> arguments{"import", "new.db", "--project", "P.json", "--dry-run"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return place.run(arguments).err;
    };
    EXPECT_EQ(
        warnings({}),
        guessedNumber("new.db", "New", 3, 21) +
            "warning: /PLC/Line/Speed: keeps its name, but the file calls it “Extra”, and another "
            "one “Speed”; the first of 2 such elements; --match name would go by the names\n"
            "warning: /PLC/Line/Motor/Run 2: got this name, since “Run” was taken; the first of 7 "
            "such elements\n");
    EXPECT_EQ(warnings({"--match", "name"}), guessedNumber("new.db", "New", 3, 21));
}

TEST_F(WeeklyImportTest, TellsProgramsAllOfIt) {
    place.write("new.db", dataBlock("Valve", "Shut : Word; \"a/b\" : Bool; Pressure : Real;") +
                              dataBlock("DB1", "Speed : DInt;"));
    const auto head = std::string(R"({"target": "/PLC", "file": "new.db", )");
    EXPECT_EQ(place.printed({"import", "new.db", "--project", "P.json", "--json", "--dry-run",
                             "--match", "name", "--remove-missing"}),
              head + R"("added": 4, "changed": 0, "moved": 1, "renamed": 0, "removed": 1, )"
                     R"("unchanged": 1, "missing": 0, "changes": [
  {"kind": "added", "element": "/PLC/Valve/Shut", "from": null, "members": []},
  {"kind": "added", "element": "/PLC/Valve/a~1b", "from": null, "members": []},
  {"kind": "added", "element": "/PLC/DB1", "from": null, "members": []},
  {"kind": "added", "element": "/PLC/DB1/Speed", "from": null, "members": []},
  {"kind": "moved", "element": "/PLC/Valve/Pressure", "from": null, "members": [
    {"name": "address", "old": "DB2", "new": "DB4"}
  ]},
  {"kind": "removed", "element": "/PLC/Valve/Open", "from": null, "members": []}
], "warnings": [], "memory": [
  {"element": "/PLC/Valve", "bytes": 8},
  {"element": "/PLC/DB1", "bytes": 4}
]}
)");

    // By its number the block is the one that was called Line, and by what it had there what it
    // has.
    place.write("new.db", dataBlock("DB1", "Speed : DInt;"));
    const auto report =
        place.run({"import", "new.db", "--project", "P.json", "--json", "--remove-missing"}).out;
    EXPECT_TRUE(report.starts_with(
        head + R"("added": 0, "changed": 1, "moved": 0, "renamed": 1, "removed": 11, )"
               R"("unchanged": 0, "missing": 0, "changes": [
  {"kind": "changed", "element": "/PLC/DB1/Speed", "from": "/PLC/Line/Speed", "members": [
    {"name": "dataType", "old": "Int", "new": "DInt"}
  ]},
  {"kind": "renamed", "element": "/PLC/DB1", "from": "/PLC/Line", "members": []},
  {"kind": "removed", "element": "/PLC/DB1/Level", "from": "/PLC/Line/Level", "members": []},
)")) << report;
    EXPECT_TRUE(report.ends_with(R"(], "warnings": [
  {"message": "took the place of “Line”, which the file calls “DB1”", "file": "new.db", )"
                                 R"("line": null, "column": null, "element": "/PLC/DB1"}
], "memory": [
  {"element": "/PLC/DB1", "bytes": 4}
]}
)")) << report;
}

} // namespace corvane::test
