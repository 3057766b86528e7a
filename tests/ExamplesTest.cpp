#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

namespace corvane::test {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

class ExampleTest : public testing::TestWithParam<std::string> {
protected:
    static std::string source() { return (examples() / (GetParam() + ".db")).string(); }
};

} // namespace

// The listings were made without this program.
TEST_P(ExampleTest, HasTheExpectedItems) {
    const Sandbox place;
    const auto listing = listingOf(place.printed({"import", source(), "--document"}));
    const auto expected = linesOf(contentOf(expectedListings() / (GetParam() + ".txt")));
    ASSERT_FALSE(expected.empty());
    const auto [found, wanted] = std::ranges::mismatch(listing, expected);
    EXPECT_EQ(listing.size(), expected.size());
    if (found != listing.end() && wanted != expected.end()) {
        EXPECT_EQ(*found, *wanted);
    }
}

TEST_P(ExampleTest, IsImportedWithoutAProblem) {
    const Sandbox place;
    static_cast<void>(place.printed({"import", source(), "--project", "P.json"}));
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
    const auto once = place.read("P.json");
    EXPECT_EQ(place.printed({"show", "P.json", "--json"}), once);
    static_cast<void>(place.printed({"import", source(), "--project", "P.json"}));
    EXPECT_EQ(place.read("P.json"), once);
}

INSTANTIATE_TEST_SUITE_P(Examples, ExampleTest, testing::Values("bottling-line", "packaging-plant"),
                         [](const auto& example) {
                             std::string name = example.param;
                             std::ranges::replace(name, '-', '_');
                             return name;
                         });

} // namespace corvane::test
