#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/numeric/ParseNumber.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::utils::numeric {
namespace {

template <std::integral Number>
std::string format(Number number) {
    return std::string(detail::formatNumber(number).view());
}

TEST(FormatNumber, WritesDecimalDigits) {
    EXPECT_EQ(format(std::uint16_t{0}), "0");
    EXPECT_EQ(format(std::uint16_t{7}), "7");
    EXPECT_EQ(format(std::uint16_t{65535}), "65535");
    EXPECT_EQ(format(std::int8_t{-128}), "-128");
    EXPECT_EQ(format(std::numeric_limits<std::int64_t>::min()), "-9223372036854775808");
    EXPECT_EQ(format(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

struct ParseCase {
    std::string_view text;
    std::optional<std::uint8_t> leading;
    std::optional<std::uint8_t> whole;
};

TEST(ParseNumber, Unsigned8Bit) {
    constexpr ParseCase kCases[] = {
        {"0", 0, 0},     {"255", 255, 255}, {"256", {}, {}}, {"99999999999999999999999", {}, {}},
        {"007", 7, 7},   {"3.9", 3, {}},    {"3e5", 3, {}},  {"12 ", 12, {}},
        {"12x", 12, {}}, {"-1", {}, {}},    {"+1", {}, {}},  {" 1", {}, {}},
        {"", {}, {}},    {".5", {}, {}},    {"x", {}, {}},
    };
    for (const auto& [text, leading, whole] : kCases) {
        EXPECT_EQ(parseLeadingDigits<std::uint8_t>(text), leading) << text;
        EXPECT_EQ(parseDigits<std::uint8_t>(text), whole) << text;
    }
}

TEST(ParseNumber, WidestNumber) {
    EXPECT_EQ(parseDigits<std::uint64_t>("18446744073709551615"), 18446744073709551615u);
    EXPECT_EQ(parseDigits<std::uint64_t>("18446744073709551616"), std::nullopt);
    EXPECT_EQ(parseLeadingDigits<std::uint16_t>("65535.5"), 65535);
    EXPECT_EQ(parseLeadingDigits<std::uint16_t>("65536"), std::nullopt);
}

} // namespace
} // namespace corvane::utils::numeric
