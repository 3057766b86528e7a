#include "elements/Members.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

struct AttributeRow {
    const model::Attribute& attribute;
    std::string_view name;
    int access;
    int code;
    int bits;
    int directions;
};

struct EventRow {
    const process::Event& event;
    std::string_view name;
    int directions;
};

void expectRow(const AttributeRow& row) {
    EXPECT_EQ(row.attribute.name(), row.name);
    EXPECT_EQ(static_cast<int>(row.attribute.access()), row.access);
    EXPECT_EQ(static_cast<int>(row.attribute.type().code), row.code);
    EXPECT_EQ(static_cast<int>(row.attribute.type().bits), row.bits);
    EXPECT_EQ(static_cast<int>(row.attribute.directions().bits()), row.directions);
}

TEST(Members, AttributesAreThoseOfTheTable) {
    const AttributeRow rows[] = {
        {kConnectionTime, "connectionTime", 0, 5, 0, 3},
        {kPlcError, "error", 0, 9, 0, 0},
        {kReadError, "error", 0, 9, 0, 1},
        {kWriteError, "writeError", 0, 9, 0, 2},
    };
    for (const AttributeRow& row : rows) {
        SCOPED_TRACE(row.name);
        expectRow(row);
    }
}

TEST(Members, ValuesComeInFourteenTypesAndTwoKindsOfAccess) {
    const std::vector<std::pair<int, int>> types = {{1, 8},  {1, 16}, {1, 32}, {1, 64}, {2, 8},
                                                    {2, 16}, {2, 32}, {2, 64}, {3, 32}, {3, 64},
                                                    {4, 8},  {4, 16}, {0, 1},  {11, 0}};
    ASSERT_EQ(types.size(), kReadWriteValues.size());
    ASSERT_EQ(types.size(), kReadOnlyValues.size());
    for (std::size_t i = 0; i != types.size(); ++i) {
        SCOPED_TRACE(i);
        const auto [code, bits] = types[i];
        expectRow({kReadWriteValues[i], "value", 2, code, bits, 3});
        expectRow({kReadOnlyValues[i], "value", 0, code, bits, 3});
    }
}

TEST(Members, EventsAreThoseOfTheTable) {
    const EventRow rows[] = {
        {kReadEvent, "read", 1},
        {kWrittenEvent, "written", 2},
        {kWriteFailedEvent, "writeFailed", 2},
    };
    for (const EventRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(row.event.name(), row.name);
        EXPECT_EQ(static_cast<int>(row.event.directions().bits()), row.directions);
    }
}

TEST(Members, TheTaskHasItsName) { EXPECT_EQ(kExecuteTask.name(), "execute"); }

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
