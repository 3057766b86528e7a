#include "CoreTesting.hpp"

#include "workbench/core/memory/MemoryMap.hpp"
#include "workbench/core/memory/MemoryRange.hpp"
#include "workbench/core/memory/MemoryWarnings.hpp"

#include <algorithm>
#include <limits>
#include <random>

namespace corvane::workbench::core::test {

namespace {

constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
constexpr auto kGap = MemoryMap::kGap;

MemoryMap mapOf(const std::vector<std::pair<std::uint64_t, std::uint64_t>>& pieces) {
    std::vector<MemoryPiece> list;
    list.reserve(pieces.size());
    for (const auto& [begin, end] : pieces)
        list.push_back({nullptr, begin, end});
    return {{nullptr, {}}, std::move(list)};
}

/// What the map should say of a bit, found out the slow way.
struct Bit {
    std::size_t piece = kGap;
    bool shared = false;
};
Bit bitOf(const MemoryMap& map, std::uint64_t bit) {
    Bit found;
    for (std::size_t i = 0; i != map.pieces().size(); ++i) {
        const auto& piece = map.pieces()[i];
        if (bit < piece.begin || bit >= piece.end)
            continue;
        found.shared = found.piece != kGap;
        if (!found.shared)
            found.piece = i;
        else
            break;
    }
    return found;
}

} // namespace

TEST(MemoryMap, OfNothing) {
    const auto map = mapOf({});
    EXPECT_EQ(map.end(), 0U);
    EXPECT_TRUE(map.runs().empty());
    EXPECT_TRUE(memoryLines(map, 8).empty());
}

TEST(MemoryMap, TellsWhoHoldsWhat) {
    using Run = MemoryMap::Run;
    const auto map = mapOf({{32, 48}, {0, 1}, {40, 64}, {1, 2}, {44, 46}});
    EXPECT_EQ(std::vector<Run>(map.runs().begin(), map.runs().end()),
              (std::vector<Run>{{0, 1, 0, false},
                                {1, 2, 1, false},
                                {2, 32, kGap, false},
                                {32, 40, 2, false},
                                {40, 48, 2, true},
                                {48, 64, 3, false}}));
    EXPECT_EQ(map.gapCount(), 1U);
    ASSERT_EQ(map.overlaps().size(), 2U);
    EXPECT_EQ(map.overlaps()[0].piece, 3U);
    EXPECT_EQ(map.overlaps()[0].before, 2U);
    EXPECT_EQ(map.overlaps()[1].before, 3U) << "reaches farther";
    EXPECT_EQ(map.piecesAt(45, 10), (std::vector<std::size_t>{2, 3, 4}));
    EXPECT_EQ(map.piecesAt(45, 2), (std::vector<std::size_t>{2, 3}));
    EXPECT_EQ(map.piecesAt(2, 10), std::vector<std::size_t>());
}

TEST(MemoryMap, SaysTheSameAsLookingAtEachBit) {
    std::mt19937 random(7);
    for (int round = 0; round != 200; ++round) {
        std::vector<std::pair<std::uint64_t, std::uint64_t>> pieces;
        for (int i = 0; i != round % 12; ++i) {
            const auto begin = random() % 60;
            pieces.emplace_back(begin, begin + 1 + random() % 16);
        }
        const auto map = mapOf(pieces);
        std::uint64_t end = 0;
        for (const auto& run : map.runs()) {
            EXPECT_EQ(run.begin, end);
            end = run.end;
            for (auto bit = run.begin; bit != run.end; ++bit) {
                const auto expected = bitOf(map, bit);
                EXPECT_EQ(run.piece, expected.piece);
                EXPECT_EQ(run.shared, expected.shared);
                EXPECT_EQ(map.piecesAt(bit, 100).empty(), run.piece == kGap);
                EXPECT_EQ(&map.runs()[map.runAt(bit)], &run);
            }
        }
    }
}

TEST(MemoryMap, LeavesOutRowsThatShowNothingNew) {
    // A byte, a gap of 100 bytes, 40 bytes, and one byte right behind.
    const auto map = mapOf({{0, 8}, {808, 1128}, {1128, 1136}});
    std::vector<std::pair<std::uint64_t, std::uint64_t>> lines;
    for (const auto& line : memoryLines(map, 8))
        lines.emplace_back(line.firstByte, line.rows);
    EXPECT_EQ(lines, (std::vector<std::pair<std::uint64_t, std::uint64_t>>{
                         {0, 1}, {8, 1}, {16, 10}, {96, 1}, {104, 1}, {112, 3}, {136, 1}}));
}

// Another plug-in may say any numbers.
TEST(MemoryMap, StaysSmallHoweverFarItReaches) {
    for (const unsigned width : {8U, 16U, 1U}) {
        const auto map = mapOf({{kMost - 1, kMost}, {5, kMost}, {kMost / 2, kMost / 2 + 1}});
        EXPECT_EQ(map.end(), kMost);
        const auto lines = memoryLines(map, width);
        EXPECT_LT(lines.size(), 20U);
        EXPECT_EQ(lines.back().firstByte + lines.back().rows * width - 1,
                  (kMost - 1) / 8 / width * width + width - 1);
    }
}

TEST(MemoryMap, EveryRowIsOnOneLine) {
    std::mt19937 random(9);
    std::vector<std::pair<std::uint64_t, std::uint64_t>> pieces;
    for (int i = 0; i != 300; ++i) {
        const auto begin = random() % 500'000;
        pieces.emplace_back(begin, begin + 1 + random() % 3'000);
    }
    const auto map = mapOf(pieces);
    std::uint64_t next = 0;
    for (const auto& line : memoryLines(map, 16)) {
        EXPECT_EQ(line.firstByte, next);
        EXPECT_EQ(line.firstRun, map.runAt(next * 8));
        next += line.rows * 16;
        if (line.rows > 1) {
            EXPECT_EQ(map.runAt(next * 8 - 1), line.firstRun) << "nothing new";
        }
    }
    EXPECT_GE(next * 8, map.end());
    EXPECT_LT(next * 8, map.end() + 128);
}

TEST(MemoryRange, SaysWhichBits) {
    EXPECT_EQ(memoryRangeText(33, 34), "bit 4.1");
    EXPECT_EQ(memoryRangeText(33, 36), "bits 4.1 to 4.3");
    EXPECT_EQ(memoryRangeText(32, 40), "byte 4");
    EXPECT_EQ(memoryRangeText(32, 48), "bytes 4 to 5");
}

class MemoryOfProject : public ProjectTest {};

TEST_F(MemoryOfProject, IsThatOfTheBlockOrTheArea) {
    const auto project = load(R"({"@Skill.S7.PLC": {"name": "P", "address": "a", "children": [
        {"@Skill.S7.DataBlock": {"name": "D", "DBNumber": 3, "children": [
            {"@Skill.S7.Struct": {"name": "s", "children": [
                {"@Skill.S7.Item": {"name": "x", "address": "DB4"}}]}},
            {"@Skill.S7.Item": {"name": "bad", "address": "MB4"}}]}},
        {"@Skill.S7.Item": {"name": "m", "address": "MB4"}},
        {"@Skill.S7.Item": {"name": "n", "address": "MB5"}},
        {"@Skill.S7.Item": {"name": "q", "address": "QB5"}}]}})");
    const auto spaceOf = [&](std::string_view path) {
        const auto space = memorySpaceOf(project.element(path));
        return space ? space->owner->path() + " " + designationOf(*space) : std::string();
    };
    EXPECT_EQ(spaceOf("/P"), "");
    for (const auto* const path : {"/P/D", "/P/D/s", "/P/D/s/x", "/P/D/bad"})
        EXPECT_EQ(spaceOf(path), "/P/D DB3");
    EXPECT_EQ(spaceOf("/P/m"), "/P M");

    const auto block = memoryMapOf(*memorySpaceOf(project.element("/P/D")));
    ASSERT_EQ(block.pieces().size(), 1U);
    EXPECT_EQ(block.pieces()[0].element, &project.element("/P/D/s/x"));
    EXPECT_EQ(memoryMapOf(*memorySpaceOf(project.element("/P/m"))).pieces().size(), 2U);
}

// What takes no memory, or stands below nothing that has any, lies nowhere.
TEST_F(MemoryOfProject, OfOtherPlugInsIsNone) {
    const auto project = load(R"({"@Skill.Wiring.Rack": {"name": "R", "children": [
        {"@Skill.Wiring.Pin": {"name": "p"}}]}})");
    EXPECT_EQ(memorySpaceOf(project.element("/R/p")), std::nullopt);
    EXPECT_TRUE(memoryWarnings(project.model().root().childElements()).empty());
}

} // namespace corvane::workbench::core::test
