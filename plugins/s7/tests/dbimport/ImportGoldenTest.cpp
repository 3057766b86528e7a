#include "ImportTesting.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

// Whole files and what becomes of them. NAME.db gives the document NAME.json, fail_NAME.db the
// message fail_NAME.txt. CORVANE_UPDATE_GOLDEN=1 writes what the importer gives now.

namespace corvane::workbench::plugins::s7Driver {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kFailing = "fail_";

std::vector<fs::path> sources() {
    std::vector<fs::path> paths;
    for (const fs::directory_entry& entry : fs::directory_iterator(testing::goldenFolder()))
        if (entry.path().extension() == ".db")
            paths.push_back(entry.path());
    std::ranges::sort(paths);
    return paths;
}

/// The document with each element on a line of its own, for the eyes of whoever reads a change.
std::string inLines(std::string_view document) {
    constexpr std::string_view kElement = "{\"@Skill";
    std::string text;
    for (std::size_t from = 0; from < document.size();) {
        const std::size_t next = std::min(document.find(kElement, from + 1), document.size());
        text.append(document.substr(from, next - from)).push_back('\n');
        from = next;
    }
    return text;
}

class ImportGoldenTest : public ::testing::TestWithParam<fs::path> {};

TEST_P(ImportGoldenTest, GivesWhatIsExpected) {
    const std::string source = testing::readFile(GetParam());
    const bool failing = GetParam().stem().native().starts_with(kFailing);
    std::string actual;
    if (failing)
        actual = testing::importError(source) + "\n";
    else
        actual = inLines(testing::import(source).text);
    fs::path expectation = GetParam();
    expectation.replace_extension(failing ? ".txt" : ".json");
    if (std::getenv("CORVANE_UPDATE_GOLDEN") != nullptr)
        std::ofstream(expectation, std::ios::binary) << actual;
    EXPECT_EQ(actual, testing::readFile(expectation));
}

INSTANTIATE_TEST_SUITE_P(Files, ImportGoldenTest, ::testing::ValuesIn(sources()),
                         [](const auto& one) { return one.param.stem().string(); });

TEST(ImportGolden, EveryExpectationHasItsSource) {
    for (const fs::directory_entry& entry : fs::directory_iterator(testing::goldenFolder())) {
        fs::path source = entry.path();
        EXPECT_TRUE(fs::exists(source.replace_extension(".db"))) << entry.path();
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
