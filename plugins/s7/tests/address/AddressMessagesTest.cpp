#include "address/AddressMessages.hpp"
#include "address/S7Address.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {
namespace {

using enum AddressMessage;

/// Where a message comes from: a text, or a conversion that no text can make fail that way.
struct Case {
    AddressMessage message;
    std::string_view expected;
    std::optional<std::string_view> text;
    std::optional<std::pair<AddressNumber, std::errc>> conversion;
};

const std::vector<Case>& cases() {
    constexpr std::errc kOther = std::errc::value_too_large;
    static const std::vector<Case> all = {
        {missingDbNumber,
         "invalid or missing DB number",
         {},
         {{AddressNumber::dbNumber, std::errc::invalid_argument}}},
        {dbNumberOutOfRange,
         "DB number out of range, the maximum acceptable value is 65535",
         "DB65536.DBB0",
         {{AddressNumber::dbNumber, std::errc::result_out_of_range}}},
        {malformedDbNumber,
         "invalid address, expected a number after \"DB\" marker",
         {},
         {{AddressNumber::dbNumber, kOther}}},
        {missingMemoryArea, "missing memory area in the address", "", {}},
        {inconsistentMemoryArea,
         "inconsistent address, while a DB number is set, the memory area marker is not \"DB\"",
         "DB12.MW8",
         {}},
        {missingByteOffset,
         "invalid or missing byte offset",
         "M",
         {{AddressNumber::byteOffset, std::errc::invalid_argument}}},
        {byteOffsetOutOfRange,
         "byte offset out of range, the maximum acceptable value is 65535",
         "MB65536",
         {{AddressNumber::byteOffset, std::errc::result_out_of_range}}},
        {malformedByteOffset,
         "error occurred while parsing the byte offset",
         {},
         {{AddressNumber::byteOffset, kOther}}},
        {unexpectedAfterByteOffset,
         "invalid address, expected nothing or a ‘.’ after the byte offset",
         "M0x",
         {}},
        {missingBitOffset,
         "invalid or missing bit offset",
         "M0.",
         {{AddressNumber::bitOffset, std::errc::invalid_argument}}},
        {bitOffsetOutOfRange,
         "bit offset out of range, the maximum acceptable value is 7",
         "M0.8",
         {{AddressNumber::bitOffset, std::errc::result_out_of_range}}},
        {malformedBitOffset,
         "error occurred while parsing the bit offset",
         {},
         {{AddressNumber::bitOffset, kOther}}},
        {extraCharacters, "encountered extra characters at the end of the address", "M0.1.2", {}},
    };
    return all;
}

TEST(AddressMessages, EveryMessageHasACase) {
    for (const AddressMessage message : kAddressMessages)
        EXPECT_EQ(std::ranges::count(cases(), message, &Case::message), 1)
            << addressMessageText(message);
}

TEST(AddressMessages, EveryCaseGivesItsMessage) {
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.expected);
        EXPECT_EQ(addressMessageText(one.message), one.expected);
        ASSERT_TRUE(one.text || one.conversion);
        if (one.text) {
            EXPECT_EQ(readAddress(*one.text), std::unexpected(one.message));
        }
        if (one.conversion) {
            EXPECT_EQ(addressNumberMessage(one.conversion->first, one.conversion->second),
                      one.message);
        }
    }
}

TEST(AddressMessages, ErrorsCarryTheText) {
    for (const Case& one : cases()) {
        if (!one.text)
            continue;
        try {
            static_cast<void>(parseAddress(*one.text));
            ADD_FAILURE() << *one.text;
        } catch (const std::runtime_error& error) {
            EXPECT_EQ(error.what(), one.expected);
        }
    }
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
