#include "dbimport/parser/Decimal.hpp"

#include "dbimport/facts/Messages.hpp"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <string>

namespace corvane::workbench::plugins::s7Driver {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// Drops what `std::from_chars` does not know: leading blanks and a plus sign in front of a digit.
std::string_view withoutPrefix(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size()));
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    return text;
}

template <class Standard>
[[noreturn]] void failAs(Message message, std::optional<std::uint64_t> place) {
    throw ImportError<Standard>(message, std::string(messageText(message)), place);
}

} // namespace

std::int32_t readDecimal(std::string_view text, std::optional<std::uint64_t> place) {
    const std::string_view digits = withoutPrefix(text);
    std::int32_t value = 0;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        failAs<std::out_of_range>(Message::numberOutOfRange, place);
    if (result.ec != std::errc{})
        failAs<std::invalid_argument>(Message::invalidNumber, place);
    return value;
}

} // namespace corvane::workbench::plugins::s7Driver
