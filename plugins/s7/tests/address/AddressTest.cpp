#include "address/DataBlockPrefix.hpp"
#include "address/S7Address.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

std::string errorOf(std::string_view text) {
    try {
        static_cast<void>(parseAddress(text));
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no error";
}

TEST(Address, MarkersAreTriedInTheirOrder) {
    const std::vector<std::pair<std::string_view, int>> expected = {
        {"C", 0x1C}, {"DB", 0x84}, {"L", 0x86},  {"T", 0x1D},    {"Q", 0x82},   {"I", 0x81},
        {"P", 0x80}, {"M", 0x83},  {"DI", 0x85}, {"IecT", 0x1F}, {"IecC", 0x1E}};
    ASSERT_EQ(kMemoryAreaMarkers.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(kMemoryAreaMarkers[row].text, expected[row].first);
        EXPECT_EQ(static_cast<int>(kMemoryAreaMarkers[row].area), expected[row].second);
    }
}

TEST(Address, SizeLettersAreTriedInTheirOrder) {
    const std::vector<std::pair<char, int>> expected = {{'B', 0}, {'W', 1}, {'D', 2}, {'X', 3}};
    ASSERT_EQ(kDataSizeLetters.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        EXPECT_EQ(kDataSizeLetters[row].letter, expected[row].first);
        EXPECT_EQ(static_cast<int>(kDataSizeLetters[row].size), expected[row].second);
    }
}

TEST(Address, GoodTexts) {
    struct Case {
        std::string_view text;
        std::optional<std::uint16_t> dbNumber;
        MemoryArea area;
    };
    using enum MemoryArea;
    const std::vector<Case> cases = {
        {"M10.3", {}, Flags},
        {"MW20", {}, Flags},
        {"MB0", {}, Flags},
        {"M0.7", {}, Flags},
        {"M0.007", {}, Flags},
        {"MW10.3", {}, Flags},
        {"MD4", {}, Flags},
        {"MX4.1", {}, Flags},
        {"M00012", {}, Flags},
        {"MB65535", {}, Flags},
        {"C5", {}, Counters},
        {"T7", {}, Timers},
        {"L2", {}, LocalData},
        {"Q4.0", {}, Outputs},
        {"I0", {}, Inputs},
        {"IW2", {}, Inputs},
        {"P256", {}, Peripheral},
        {"DI3", {}, InstanceDataBlock},
        {"DIB3", {}, InstanceDataBlock},
        {"DBX4.1", {}, DataBlock},
        {"DB4", {}, DataBlock},
        {"DBD8", {}, DataBlock},
        {"DB12.DBW8", 12, DataBlock},
        {"DB0.DB0", 0, DataBlock},
        {"DB007.DBX1.2", 7, DataBlock},
        {"DB65535.DBB0", 65535, DataBlock},
        // A digit behind the dot: byte 1, bit 5, and no data block number.
        {"DB1.5", {}, DataBlock},
        {"DB65535.7", {}, DataBlock},
    };
    for (const Case& one : cases) {
        SCOPED_TRACE(one.text);
        ASSERT_TRUE(readAddress(one.text));
        EXPECT_EQ(parseAddress(one.text), (S7Address{one.dbNumber, one.area}));
    }
}

TEST(Address, PlacesThatTextsName) {
    struct Case {
        std::string_view text;
        unsigned offset;
        unsigned bit;
    };
    constexpr Case kCases[] = {
        {"M10.3", 10, 3},    {"MB0", 0, 0},         {"M0.007", 0, 7},        {"MB65535", 65535, 0},
        {"M00012", 12, 0},   {"T7", 7, 0},          {"DBX4.1", 4, 1},        {"DB1.5", 1, 5},
        {"DB12.DBW8", 8, 0}, {"DB12.DBX8.6", 8, 6}, {"DB65535.7", 65535, 7},
    };
    for (const Case& one : kCases) {
        SCOPED_TRACE(one.text);
        const auto location = readLocation(one.text);
        ASSERT_TRUE(location);
        EXPECT_EQ(location->offset, one.offset);
        EXPECT_EQ(location->bit, one.bit);
        EXPECT_EQ(location->address, parseAddress(one.text));
    }
    EXPECT_EQ(readLocation("M0.8").error(), AddressMessage::bitOffsetOutOfRange);
}

TEST(Address, AreasHaveTheirMarkersAndUnits) {
    for (const auto& marker : kMemoryAreaMarkers) {
        EXPECT_EQ(markerOf(marker.area), marker.text);
        const bool isNumbered = marker.text.ends_with('C') || marker.text.ends_with('T');
        EXPECT_EQ(bitsPerOffset(marker.area), isNumbered ? 16U : 8U) << marker.text;
    }
}

TEST(Address, BadTexts) {
    const std::string area = "missing memory area in the address";
    const std::string inconsistent = "inconsistent address, while a DB number is set, the memory "
                                     "area marker is not \"DB\"";
    const std::string dbRange = "DB number out of range, the maximum acceptable value is 65535";
    const std::string byteMissing = "invalid or missing byte offset";
    const std::string byteRange = "byte offset out of range, the maximum acceptable value is 65535";
    const std::string afterByte =
        "invalid address, expected nothing or a \xE2\x80\x98.\xE2\x80\x99 after the byte offset";
    const std::string bitMissing = "invalid or missing bit offset";
    const std::string bitRange = "bit offset out of range, the maximum acceptable value is 7";
    const std::string extra = "encountered extra characters at the end of the address";
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"", area},
        {" M0", area},
        {"mW20", area},
        {"X0", area},
        {"D", area},
        {"12", area},
        {"DB5.XW0", area},
        {"DB12.MW8", inconsistent},
        {"DB12.DIW8", inconsistent},
        {"DB12.IecT5", inconsistent},
        {"DB65536.DBB0", dbRange},
        {"DB99999999999999999999.MW0", dbRange},
        {"DB65536.\n", dbRange},
        {std::string("DB65536.\0", 9), dbRange},
        {"M", byteMissing},
        {"MW", byteMissing},
        {"MWB0", byteMissing},
        {"M-1", byteMissing},
        {"M+1", byteMissing},
        {"M 1", byteMissing},
        {"Mw1", byteMissing},
        {"DB", byteMissing},
        {"DBB", byteMissing},
        {"DB.DBW0", byteMissing},
        {"DB12.DB", byteMissing},
        {"IecT5", byteMissing},
        {"IecC5", byteMissing},
        {"MB65536", byteRange},
        {"DB65536.5", byteRange},
        {"DB65536", byteRange},
        {"M0x", afterByte},
        {"M0,1", afterByte},
        {"M0 ", afterByte},
        {"DB12DBW8", afterByte},
        {"M0.", bitMissing},
        {"M0.x", bitMissing},
        {"M0.-1", bitMissing},
        // Nothing behind the dot: no data block prefix.
        {"DB1.", bitMissing},
        {"M0.8", bitRange},
        {"M0.300", bitRange},
        {"M0.255", bitRange},
        {"M0.256", bitRange},
        {"DB1.500000000000", bitRange},
        {"M0.1.2", extra},
        {"M0.1 ", extra},
        {"DB3.DB5.DBX0.0", bitMissing},
    };
    for (const auto& [text, message] : cases)
        EXPECT_EQ(errorOf(text), message) << text;
}

TEST(Address, StripsTheDataBlockPrefixOfAWholeMatchOnly) {
    const std::vector<std::pair<std::u16string_view, std::u16string_view>> cases = {
        {u"DB3.DB12", u"DB12"},
        {u"DB0.DB", u"DB"},
        {u"DB65536.DB99999999999", u"DB99999999999"},
        {u"DB3.DBX0.0", u"DB3.DBX0.0"},
        {u"DB3.DBW8", u"DB3.DBW8"},
        {u"DB3.DB12.0", u"DB3.DB12.0"},
        {u"DB.DB12", u"DB.DB12"},
        {u"DB3DB12", u"DB3DB12"},
        {u"DB3.", u"DB3."},
        {u"DB3.D", u"DB3.D"},
        {u"DB3.db12", u"DB3.db12"},
        {u"db3.DB12", u"db3.DB12"},
        {u" DB3.DB12", u" DB3.DB12"},
        {u"DB3.DB12 ", u"DB3.DB12 "},
        {u"DB3.DB1.DB2", u"DB3.DB1.DB2"},
        {u"D", u"D"},
        {u"", u""},
    };
    for (const auto& [text, expected] : cases) {
        const std::string narrow(text.begin(), text.end());
        SCOPED_TRACE(narrow);
        EXPECT_EQ(stripDataBlockPrefix(text), expected);
        EXPECT_EQ(stripDataBlockPrefix(narrow), std::string(expected.begin(), expected.end()));
    }
    // Digits are those of ASCII; U+0663 is a digit elsewhere, U+0144 looks like "D" in eight bits.
    EXPECT_EQ(stripDataBlockPrefix(u"DB\u0663.DB1"), u"DB\u0663.DB1");
    EXPECT_EQ(stripDataBlockPrefix(u"\u0144B3.DB1"), u"\u0144B3.DB1");
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
