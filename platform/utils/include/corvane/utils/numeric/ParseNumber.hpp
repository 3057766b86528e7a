#pragma once

#include <charconv>
#include <concepts>
#include <optional>
#include <string_view>

/// Decimal numbers as documents and forms carry them. Only the digits of ASCII count, no locale is
/// asked, and neither a sign nor a blank belongs to a number. The type that is asked for is the
/// limit: 256 does not fit into 8 bits and gives nothing, where others would give 0 or 255.
namespace corvane::utils::numeric {

/// The number that the leading decimal digits of `text` give; what follows them is not looked at,
/// so a fraction or an exponent is dropped ("3.9" gives 3). Empty when there is no leading digit (a
/// sign is none) or when the value does not fit.
template <std::unsigned_integral Number>
[[nodiscard]] std::optional<Number> parseLeadingDigits(std::string_view text) {
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc{})
        return std::nullopt;
    return number;
}

/// As `parseLeadingDigits`, but the whole of `text` must be digits: empty for "", "7 " and "+7".
/// Leading zeros do not matter, however many there are.
template <std::unsigned_integral Number>
[[nodiscard]] std::optional<Number> parseDigits(std::string_view text) {
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc{} || result.ptr != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace corvane::utils::numeric
