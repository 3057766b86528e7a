#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace corvane::test {

namespace {

/// A PLC with two commands and these data blocks, as a save writes it.
std::string plcWith(std::string_view blocks) {
    return R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "10.0.0.1", "rack": 0, "slot": 1, "children": [
    {"@Skill.S7.Command": {"name": "Slow"}},
    {"@Skill.S7.Command": {"name": "Fast"}})" +
           std::string(blocks) + R"(
  ]}}
]}
)";
}

std::string block(std::string_view name, int number, const std::vector<std::string>& children) {
    std::string text = ",\n    {\"@Skill.S7.DataBlock\": {\"name\": \"" + std::string(name) +
                       "\", \"DBNumber\": " + std::to_string(number) + ", \"children\": [";
    for (std::size_t i = 0; i != children.size(); ++i)
        text += (i == 0 ? "\n      " : ",\n      ") + children[i];
    return text + "\n    ]}}";
}

std::string item(std::string_view name, std::string_view type, std::string_view address,
                 std::string_view command = "Slow") {
    return R"({"@Skill.S7.Item": {"name": ")" + std::string(name) + R"(", "dataType": ")" +
           std::string(type) + R"(", "address": ")" + std::string(address) +
           R"(", "writable": true, "command": "/PLC/)" + std::string(command) + "\"}}";
}

std::string structure(std::string_view name, const std::vector<std::string>& children) {
    std::string text =
        R"({"@Skill.S7.Struct": {"name": ")" + std::string(name) + "\", \"children\": [";
    for (std::size_t i = 0; i != children.size(); ++i)
        text += (i == 0 ? "\n        " : ",\n        ") + children[i];
    return text + "\n      ]}}";
}

/// The warning of the one item whose name the file, which calls it "n", has for another.
std::string misleading(const std::string& name) {
    return "warning: /PLC/Data/" + name +
           ": keeps its name, but the file calls it “n”, and another one “" + name +
           "”; --match name would go by the names\n";
}

struct Reimport {
    std::string name;
    std::string before; // what stands in the PLC beside its commands
    std::string source;
    std::string after;
    int added;
    int updated;
    int renamed;
    std::string warnings; // on standard error, at the first import

    friend std::ostream& operator<<(std::ostream& stream, const Reimport& reimport) {
        return stream << reimport.name;
    }
};

class ReimportTest : public testing::TestWithParam<Reimport> {};

std::string countsOf(const std::string& report) {
    const auto from = report.find(": ") + 2;
    return report.substr(from, report.find(".\n") - from);
}

std::string counted(int count, std::string_view what) {
    return std::to_string(count) + " " + std::string(what);
}

/// What tells whether a file was written.
struct FileState {
    explicit FileState(const Sandbox& place) : content(place.read("P.json")) {
        EXPECT_EQ(::stat((place.folder() / "P.json").c_str(), &status), 0);
    }
    friend bool operator==(const FileState& a, const FileState& b) {
        return a.content == b.content && a.status.st_ino == b.status.st_ino &&
               a.status.st_mtim.tv_sec == b.status.st_mtim.tv_sec &&
               a.status.st_mtim.tv_nsec == b.status.st_mtim.tv_nsec;
    }

    std::string content;
    struct stat status{};
};

} // namespace

TEST_P(ReimportTest, KeepsWhatIsTheUsers) {
    const auto& reimport = GetParam();
    const Sandbox place;
    place.write("P.json", plcWith(reimport.before));
    place.write("a.db", reimport.source);
    const auto imported = [&](std::vector<std::string> more) {
        std::vector<std::string> arguments{"import", "a.db", "--project", "P.json"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto result = place.run(arguments);
        EXPECT_EQ(result.exitCode, 0) << result;
        EXPECT_EQ(result.err, reimport.warnings);
        return result.out;
    };
    const auto preview = imported({"--dry-run"});
    EXPECT_TRUE(countsOf(preview).starts_with(counted(reimport.added, "added, ") +
                                              counted(reimport.updated, "updated, ") +
                                              counted(reimport.renamed, "renamed, ")))
        << preview;
    const FileState before(place);
    const auto report = imported({});
    EXPECT_EQ(
        countsOf(report),
        counted(reimport.added, reimport.added == 1 ? "element added, " : "elements added, ") +
            counted(reimport.updated, "updated") +
            (reimport.renamed == 0 ? "" : ", " + counted(reimport.renamed, "renamed")));
    const FileState once(place);
    EXPECT_EQ(once.content, plcWith(reimport.after));
    EXPECT_EQ(before == once, reimport.before == reimport.after);
    EXPECT_EQ(place.printed({"show", "P.json", "--json"}), once.content);

    const auto again = place.run({"import", "a.db", "--project", "P.json"}).out;
    EXPECT_EQ(countsOf(again), "0 elements added, 0 updated");
    EXPECT_TRUE(FileState(place) == once) << "what changes nothing writes nothing";
}

INSTANTIATE_TEST_SUITE_P(
    Reimport, ReimportTest,
    testing::Values(
        Reimport{"nothingHasChanged",
                 block("Data", 5, {item("x", "Bool", "DB0.0", "Fast"), item("y", "Int", "DB2")}),
                 dataBlock("Data", "x : Bool; y : Int;"),
                 block("Data", 5, {item("x", "Bool", "DB0.0", "Fast"), item("y", "Int", "DB2")}), 0,
                 0, 0, ""},
        // The command goes with the name where the name has another address than before...
        Reimport{"aCommandIsKeptByPath",
                 block("Data", 5, {item("x", "Int", "DB0"), item("y", "Int", "DB2", "Fast")}),
                 dataBlock("Data", "x : DInt; y : Int;"),
                 block("Data", 5,
                       {item("x", "DInt", "DB0"), item("y", "Int", "DB2", "Fast"),
                        item("y 2", "Int", "DB4", "Fast")}),
                 1, 1, 0, "warning: /PLC/Data/y 2: got this name, since “y” was taken\n"},
        // ...and with the address where that has another name.
        Reimport{"aCommandAndANameAreKeptByAddress",
                 block("Data", 5, {item("mine", "Int", "DB0", "Fast")}),
                 dataBlock("Data", "theirs : Word;"),
                 block("Data", 5, {item("mine", "Word", "DB0", "Fast")}), 0, 1, 0, ""},
        Reimport{"nothingIsRemovedAndNewComesLast",
                 block("Data", 5, {item("gone", "Int", "DB8"), item("y", "Int", "DB2")}) +
                     block("Other", 9, {item("o", "Int", "DB0")}),
                 dataBlock("Data", "x : Int; y : Int; z : Int;") + dataBlock("New", "n : Byte;"),
                 block("Data", 5,
                       {item("gone", "Int", "DB8"), item("y", "Int", "DB2"),
                        item("x", "Int", "DB0"), item("z", "Int", "DB4")}) +
                     block("Other", 9, {item("o", "Int", "DB0")}) +
                     block("New", 10, {item("n", "Byte", "DB0")}),
                 4, 0, 0, guessedNumber("a.db", "New", 10, 8)},
        Reimport{"structuresAreKnownByName",
                 block("Data", 5,
                       {structure("st", {item("a", "Int", "DB0", "Fast")}),
                        structure("mine", {item("b", "Int", "DB2", "Fast")})}),
                 dataBlock("Data", "st : Struct A : Int; END_STRUCT; "
                                   "theirs : Struct b : Int; END_STRUCT;"),
                 block("Data", 5,
                       {structure("st", {item("a", "Int", "DB0", "Fast")}),
                        structure("mine", {item("b", "Int", "DB2", "Fast")}),
                        structure("theirs", {item("b", "Int", "DB2")})}),
                 2, 0, 0, ""},
        Reimport{"dataBlocksAreKnownByNumber", block("Motor", 5, {item("m", "Int", "DB0", "Fast")}),
                 dataBlock("DB5", "x : Int;"), block("DB5", 5, {item("m", "Int", "DB0", "Fast")}),
                 0, 0, 1,
                 "warning: /PLC/DB5: took the place of “Motor”, which the file calls “DB5”\n"},
        Reimport{"aRenamedDataBlockIsAnother", block("Mine", 5, {item("x", "Int", "DB0", "Fast")}),
                 dataBlock("Theirs", "x : Int;"),
                 block("Mine", 5, {item("x", "Int", "DB0", "Fast")}) +
                     block("Theirs", 6, {item("x", "Int", "DB0")}),
                 2, 0, 0, guessedNumber("a.db", "Theirs", 6)},
        Reimport{"namesThatStateANumberAreExchanged",
                 block("DB1", 2, {item("two", "Int", "DB0", "Fast")}) +
                     block("DB2", 1, {item("one", "Int", "DB0")}),
                 dataBlock("DB1", "x : Int;") + dataBlock("DB2", "x : Int;"),
                 block("DB2", 2, {item("two", "Int", "DB0", "Fast")}) +
                     block("DB1", 1, {item("one", "Int", "DB0")}),
                 0, 0, 2,
                 "warning: /PLC/DB1: took the place of “DB2”, which the file calls “DB1”; the "
                 "first of 2 such elements\n"},
        Reimport{"aNumberInTheNameOverridesTheOldOne",
                 block("DB12", 4, {item("x", "Int", "DB0", "Fast")}), dataBlock("DB12", "x : Int;"),
                 block("DB12", 4, {item("x", "Int", "DB0", "Fast")}) +
                     block("DB12 2", 12, {item("x", "Int", "DB0", "Fast")}),
                 2, 0, 0, "warning: /PLC/DB12 2: got this name, since “DB12” was taken\n"},
        // A new variable has the name of one whose name was kept.
        Reimport{"aTakenNameGetsANumber", block("Data", 5, {item("b", "Int", "DB0", "Fast")}),
                 dataBlock("Data", "n : Int; b : Real; c : Struct b : Int; END_STRUCT;"),
                 block("Data", 5,
                       {item("b", "Int", "DB0", "Fast"), item("b 2", "Real", "DB2", "Fast"),
                        structure("c", {item("b", "Int", "DB6")})}),
                 3, 0, 0,
                 misleading("b") + "warning: /PLC/Data/b 2: got this name, since “b” was taken\n"},
        Reimport{
            "aStructureWhoseNameIsTakenIsFoundAgain",
            block("Data", 5, {item("st", "Int", "DB0", "Fast")}),
            dataBlock("Data", "n : Int; st : Struct b : Int; END_STRUCT;"),
            block("Data", 5,
                  {item("st", "Int", "DB0", "Fast"), structure("st 2", {item("b", "Int", "DB2")})}),
            2, 0, 0,
            misleading("st") + "warning: /PLC/Data/st 2: got this name, since “st” was taken\n"}),
    [](const auto& reimport) { return reimport.param.name; });

TEST(ReimportOfItems, PrefersTheOneOfTheSameName) {
    const Sandbox place;
    place.write("P.json", plcWith(block("Data", 5,
                                        {item("old", "Int", "DB0", "Fast"),
                                         item("x", "Int", "DB0", "Slow")})));
    place.write("a.db", dataBlock("Data", "x : Word;"));
    static_cast<void>(place.printed({"import", "a.db", "--project", "P.json"}));
    EXPECT_EQ(place.read("P.json"), plcWith(block("Data", 5,
                                                  {item("old", "Int", "DB0", "Fast"),
                                                   item("x", "Word", "DB0", "Slow")})));
}

TEST(ReimportOfCommands, TheDefaultIsTheLastOneOfThatNameOrElseTheFirst) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"A", "B"}, "A"},
        {{"A", "Default Command", "B"}, "Default Command"},
    };
    for (const auto& [names, chosen] : cases) {
        const Sandbox place;
        std::string commands;
        for (const auto& name : names)
            commands += std::string(commands.empty() ? "" : ",") +
                        R"({"@Skill.S7.Command": {"name": ")" + name + "\"}}";
        place.write("P.json", R"({"corvane": 1, "elements": [{"@Skill.S7.PLC": {"name": "PLC",
                                  "children": [)" +
                                  commands + "]}}]}");
        place.write("a.db", dataBlock("Data", "x : Int;"));
        static_cast<void>(place.printed({"import", "a.db", "--project", "P.json"},
                                        guessedNumber("a.db", "Data", 1)));
        EXPECT_NE(place.read("P.json").find(item("x", "Int", "DB0", chosen)), std::string::npos);
    }
}

// A command that is missing comes with the import: what waited for it is right again.
TEST(ReimportOfCommands, OneThatIsMissingIsMade) {
    const Sandbox place;
    place.write("P.json", R"({"corvane": 1, "elements": [
        {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "children": [
            {"@Skill.S7.Item": {"name": "i", "address": "MB0",
                                "command": "/PLC/Default Command"}}]}}]})");
    place.write("a.db", dataBlock("Data", "x : Int;"));
    EXPECT_EQ(place.run({"check", "P.json"}).exitCode, 1);
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
}

} // namespace corvane::test
