#include "PrepareTesting.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

// Whole files and what becomes of them. Each folder is a case: its sources are prepared together,
// in the order of their names, which gives prepared.txt and, line by line, what left_out.txt says.
// CORVANE_UPDATE_GOLDEN=1 writes what the preparation gives now.

namespace corvane::workbench::plugins::s7Driver::prepare {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> cases() {
    std::vector<fs::path> folders;
    for (const fs::directory_entry& entry : fs::directory_iterator(S7_PREPARE_DIRECTORY))
        folders.push_back(entry.path());
    std::ranges::sort(folders);
    return folders;
}

testing::Files sourcesIn(const fs::path& folder) {
    testing::Files files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path().extension() != ".txt")
            files.push_back({.name = entry.path().filename().string(),
                             .bytes = s7Driver::testing::readFile(entry.path())});
    std::ranges::sort(files, {}, &ui::SourceFile::name);
    return files;
}

void expectFile(const fs::path& file, const std::string& actual) {
    if (std::getenv("CORVANE_UPDATE_GOLDEN") != nullptr)
        std::ofstream(file, std::ios::binary) << actual;
    EXPECT_EQ(actual, s7Driver::testing::readFile(file));
}

class PrepareGoldenTest : public ::testing::TestWithParam<fs::path> {};

TEST_P(PrepareGoldenTest, GivesWhatIsExpected) {
    const testing::Files files = sourcesIn(GetParam());
    const Options options{.standardAccess = true, .constants = {{"COUNT", 2}}, .blocks = {}};
    const ui::PreparedSource prepared = prepareSources(files, options);
    std::string leftOut;
    for (const std::string& line : testing::leftOutOf(files, prepared))
        leftOut.append(line) += '\n';
    expectFile(GetParam() / "prepared.txt", prepared.text);
    expectFile(GetParam() / "left_out.txt", leftOut);
    EXPECT_EQ(prepared.origins.size(),
              static_cast<std::size_t>(std::ranges::count(prepared.text, '\n')));
    const testing::Files again{{.name = "prepared.db", .bytes = prepared.text}};
    EXPECT_EQ(prepareSources(again, {}).text, prepared.text);
    EXPECT_NE(testing::importedItems(prepared.text), std::vector<std::string>());
}

INSTANTIATE_TEST_SUITE_P(Folders, PrepareGoldenTest, ::testing::ValuesIn(cases()),
                         [](const auto& one) { return one.param.filename().string(); });

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::prepare
