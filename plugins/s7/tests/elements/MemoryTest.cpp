#include "ElementTree.hpp"

#include "elements/DataTypes.hpp"

#include <limits>

namespace corvane::workbench::plugins::s7Driver::testing {
namespace {

using data::MemoryExtent;

constexpr auto kLargest = std::numeric_limits<std::uint64_t>::max();

/// A PLC with data block 5, an item below a structure of it and one beside it.
struct Items {
    ElementTree tree;
    Plc& plc = tree.load<Plc>(nullptr, "PLC", R"({"address":"a"})");
    DataBlock& block = tree.load<DataBlock>(&plc, "Data", R"({"DBNumber":5})");
    Struct& structure = tree.load<Struct>(&block, "structure");
    Item& member = tree.load<Item>(&structure, "member");
    Item& standalone = tree.load<Item>(&plc, "standalone");
};

/// Where an item is; `bits` is 0 where it lies nowhere.
struct Place {
    std::string_view area;
    std::uint64_t offset = 0;
    std::uint64_t bits = 0;

    friend bool operator==(const Place&, const Place&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Place& place) {
        return stream << place.area << " " << place.offset << "+" << place.bits;
    }
};

Place placeOf(Item& item, std::string_view type, std::string_view address,
              std::uint64_t stringSize = 0) {
    item.dataType = type;
    item.address = address;
    item.stringSize = stringSize;
    const auto use = item.memoryUse();
    const auto* const extent = std::get_if<MemoryExtent>(&use);
    if (extent == nullptr)
        return {};
    return {extent->area, extent->offset, extent->size};
}

TEST(Memory, OfEachDataType) {
    constexpr std::pair<std::string_view, unsigned> kBits[] = {
        {"Bool", 1},
        {"Byte", 8},
        {"Word", 16},
        {"DWord", 32},
        {"LWord", 64},
        {"SInt", 8},
        {"USInt", 8},
        {"Int", 16},
        {"UInt", 16},
        {"DInt", 32},
        {"UDInt", 32},
        {"LInt", 64},
        {"ULInt", 64},
        {"Real", 32},
        {"LReal", 64},
        {"String", 96},
        {"WString", 192},
        // What only a hand-edited document can hold.
        {"Date", 0},
        {"", 0},
    };
    Items items;
    for (const auto& [type, bits] : kBits) {
        const auto expected = bits == 0 ? Place{} : Place{"", 32, bits};
        EXPECT_EQ(placeOf(items.member, type, "DB4", 10), expected) << type;
    }
    for (const auto& type : kDataTypes)
        EXPECT_GT(bitsInMemory(type, 0), 0U) << type.name << " is in the table above";
}

TEST(Memory, OfTextsOfAnySize) {
    Items items;
    EXPECT_EQ(placeOf(items.member, "String", "DB0", 0), (Place{"", 0, 16}));
    EXPECT_EQ(placeOf(items.member, "String", "DB0", 254), (Place{"", 0, 2048}));
    EXPECT_EQ(placeOf(items.member, "WString", "DB0", 254), (Place{"", 0, 4096}));
    EXPECT_GT(placeOf(items.member, "WString", "DB65535", kLargest).bits, 8U * 65536U);
    EXPECT_EQ(placeOf(items.member, "WString", "DB0", kLargest),
              placeOf(items.member, "WString", "DB0", kLargest - 1));
}

TEST(Memory, OfMembers) {
    constexpr std::pair<std::string_view, Place> kCases[] = {
        {"DB0.0", {"", 0, 1}},
        {"DBX4.1", {"", 33, 1}},
        {"DB7", {"", 56, 1}},
        {"DB65535.7", {"", 524287, 1}},
        {"DB5.DBX2.0", {"", 16, 1}},
        {"DB6.DBX2.0", {}}, // another block
        {"MX2.0", {}},
        {"DBX2.8", {}},
        {"DB65536.0", {}},
        {"", {}},
    };
    Items items;
    for (const auto& [address, place] : kCases)
        EXPECT_EQ(placeOf(items.member, "Bool", address), place) << address;
    EXPECT_EQ(placeOf(items.member, "Word", "DB4.3"), (Place{"", 32, 16})) << "begins at a byte";
}

TEST(Memory, OfStandaloneItems) {
    constexpr std::pair<std::string_view, Place> kCases[] = {
        {"MW20", {"M", 160, 16}},  {"Q4", {"Q", 32, 16}},  {"IW2", {"I", 16, 16}},
        {"P256", {"P", 2048, 16}}, {"L3", {"L", 24, 16}},  {"DI4", {"DI", 32, 16}},
        {"T7", {"T", 112, 16}},    {"C7", {"C", 112, 16}}, {"DBW2", {}},
        {"DB5.DBW2", {}},          {"IecT5", {}},
    };
    Items items;
    for (const auto& [address, place] : kCases)
        EXPECT_EQ(placeOf(items.standalone, "Int", address), place) << address;
}

TEST(Memory, OfWhatHoldsItems) {
    Items items;
    EXPECT_EQ(items.plc.memoryUse(), data::MemoryUse(data::MemoryDevice{}));
    EXPECT_EQ(items.block.memoryUse(), data::MemoryUse(data::MemoryBlock{"DB5"}));
    EXPECT_EQ(items.structure.memoryUse(), data::MemoryUse());
    EXPECT_EQ(items.tree.load<Command>(&items.plc, "Command").memoryUse(), data::MemoryUse());
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver::testing
