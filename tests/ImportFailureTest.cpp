#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// The beginning of the object with which a failed import answers a program.
std::string answer(std::string_view message, std::string_view file) {
    std::string text = R"({"error": {"message": ")";
    for (const char character : message)
        text.append(character == '"' ? "\\" : "").push_back(character);
    return text.append(R"(", "file": ")").append(file).append(R"(", )");
}

constexpr std::string_view kNoPlace = R"("line": null, "column": null, )";
constexpr std::string_view kNoHint = R"("hint": null}})"
                                     "\n";

} // namespace

TEST(ImportFailure, IsAnObjectForProgramsWhateverFailed) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    place.write("a.txt", "");
    place.write("Bad.json", "{}");
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    const std::vector<std::vector<std::string>> failing{
        {"import", "a.txt"},
        {"import", "a.db", "--project", "Bad.json"},
        {"import", "a.db", "--project", "P.json", "--at", "/Q"},
        {"import", "a.db", "--project", "P.json", "--at", "/PLC/Data"},
        {"import", "a.db", "--project", "missing/P.json"},
    };
    for (auto arguments : failing) {
        const auto told = place.run(arguments);
        ASSERT_TRUE(told.err.starts_with("corvane: ")) << told;
        EXPECT_EQ(told.out, "");
        auto expected = told;
        expected.out = answer(told.err.substr(0, told.err.find('\n')), arguments[1]);
        expected.out.append(kNoPlace).append(kNoHint);
        arguments.emplace_back("--json");
        EXPECT_EQ(place.run(arguments), expected);
    }
}

TEST(ImportFailure, SaysWhatHelpsAgainstAMissingFile) {
    const Sandbox place;
    constexpr std::string_view kMessage = "corvane: none.txt: No such file or directory";
    constexpr std::string_view kHint = "there is no such file; check its name and its folder";
    EXPECT_EQ(place.run({"import", "none.txt", "--json"}),
              (Result{.exitCode = 1,
                      .out = answer(kMessage, "none.txt")
                                 .append(kNoPlace)
                                 .append(R"("hint": ")")
                                 .append(kHint)
                                 .append("\"}}\n"),
                      .err = std::string(kMessage).append("\nhint: ").append(kHint) + "\n"}));
}

constexpr std::string_view kOptimized = "DATA_BLOCK \"Press\"\n"
                                        "{\tS7_Optimized_Access := 'TRUE' }\n";
constexpr std::string_view kOptimizedText =
    "Error importing S7 data blocks from a.db: S7 Optimized Access should be set to FALSE ";
constexpr std::string_view kOptimizedHint =
    "the variables of this data block have no fixed addresses: in the properties of the block in "
    "the PLC programming environment clear \u201COptimized block access\u201D, compile it, and "
    "export it again";

TEST(ImportFailure, ShowsThePlaceTheLineAndAHint) {
    const Sandbox place;
    place.write("a.db", kOptimized);
    const Result told{.exitCode = 1,
                      .out = {},
                      .err = std::string(kOptimizedText) +
                             "\n"
                             "a.db:2:26\n"
                             "{\tS7_Optimized_Access := 'TRUE' }\n"
                             " \t                       ^\n"
                             "hint: " +
                             std::string(kOptimizedHint) + "\n"};
    EXPECT_EQ(place.run({"import", "a.db"}), told);
    EXPECT_EQ(place.runOnTerminal({"import", "a.db"}), told) << "which keeps the tabs";
    auto answered = told;
    answered.out = answer(kOptimizedText, "a.db") + R"("line": 2, "column": 26, "hint": ")" +
                   std::string(kOptimizedHint) + "\"}}\n";
    EXPECT_EQ(place.run({"import", "a.db", "--json"}), answered);
}

TEST(ImportFailure, MasksTheLineOnATerminal) {
    const Sandbox place;
    place.write("a.db", "(* \x1b[2J *) PROGRAM\n");
    const std::string text = "Error importing S7 data blocks from a.db: Missing DATA_BLOCK "
                             "declaration \na.db:1:12\n";
    EXPECT_EQ(place.run({"import", "a.db"}).err, text + "(* \x1b[2J *) PROGRAM\n           ^\n");
    EXPECT_EQ(place.runOnTerminal({"import", "a.db"}).err,
              text + "(* ?[2J *) PROGRAM\n           ^\n");
}

// What the message says of the command line is no failure of the import.
TEST(ImportFailure, AWrongCommandLineIsNoObject) {
    const Sandbox place;
    EXPECT_EQ(place.run({"import", "--json"}), misused("FILE is required", "import"));
}

} // namespace corvane::test
