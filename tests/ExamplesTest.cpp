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

/// A file and what its import warns of, behind the file's name; empty where it does not.
struct Example {
    std::string name;
    std::string hidden;
    std::string guessed; // as long as the project does not have the blocks
    std::string withoutItem;

    friend std::ostream& operator<<(std::ostream& stream, const Example& example) {
        return stream << example.name;
    }
};

class ExampleTest : public testing::TestWithParam<Example> {
public:
    static std::string source() { return (examples() / (GetParam().name + ".db")).string(); }

    /// What the first import says, and what every further one.
    static std::string firstWarnings() {
        return warning(GetParam().hidden) + warning(GetParam().guessed) +
               warning(GetParam().withoutItem);
    }
    static std::string laterWarnings() {
        return warning(GetParam().hidden) + warning(GetParam().withoutItem);
    }

private:
    static std::string warning(const std::string& text) {
        return text.empty() ? "" : "warning: " + source() + ":" + text + "\n";
    }
};

} // namespace

// The listings were made without this program.
TEST_P(ExampleTest, HasTheExpectedItems) {
    const Sandbox place;
    const auto listing =
        listingOf(place.printed({"import", source(), "--document"}, firstWarnings()));
    const auto expected = linesOf(contentOf(expectedListings() / (GetParam().name + ".txt")));
    ASSERT_FALSE(expected.empty());
    const auto [found, wanted] = std::ranges::mismatch(listing, expected);
    EXPECT_EQ(listing.size(), expected.size());
    if (found != listing.end() && wanted != expected.end()) {
        EXPECT_EQ(*found, *wanted);
    }
}

TEST_P(ExampleTest, IsImportedWithoutAProblem) {
    const Sandbox place;
    static_cast<void>(place.printed({"import", source(), "--project", "P.json"}, firstWarnings()));
    EXPECT_EQ(place.run({"check", "P.json"}), done("No problems found.\n"));
    const auto once = place.read("P.json");
    EXPECT_EQ(place.printed({"show", "P.json", "--json"}), once);
    static_cast<void>(place.printed({"import", source(), "--project", "P.json"}, laterWarnings()));
    EXPECT_EQ(place.read("P.json"), once);
}

INSTANTIATE_TEST_SUITE_P(
    Examples, ExampleTest,
    testing::Values(
        Example{"bottling-line", "",
                "4:12: 3 block numbers are not in the file and were guessed: “Line” got 51, "
                "“Filler” got 52, “Recipe” got 53",
                "22:7: 3 variables gave no item, since items do not have their types: 1 S5Time, 1 "
                "Date_And_Time, 1 DTL"},
        Example{"packaging-plant",
                "12:7: Plant_General: “FirstScan” is hidden (ExternalAccessible is False) and "
                "takes no memory in the import: from “Actual” on, the addresses are not those in "
                "the PLC; the first of 13 such data blocks",
                "1:12: 23 block numbers are not in the file and were guessed: “Plant_General” got "
                "206, “Operator_Panel” got 207, “Depalletizer” got 208, “Conveyor_Infeed” got "
                "209, “Rinser” got 210 and 18 more",
                "9:7: 150 variables gave no item, since items do not have their types: 8 S5Time, "
                "113 Date_And_Time, 29 DTL"}),
    [](const auto& example) {
        std::string name = example.param.name;
        std::ranges::replace(name, '-', '_');
        return name;
    });

} // namespace corvane::test
