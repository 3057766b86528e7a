#pragma once

#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/numeric/ParseNumber.hpp>

#include <concepts>
#include <limits>

namespace corvane::workbench::plugins::s7Driver {

/// Reads a number from its decimal text. Reading stops at the first character that is no digit: a
/// fraction or an exponent is dropped on purpose, so 3.9 reads as 3. Throws the decoder's range
/// error where no digit leads (a negative number, a value that is no number) or where the value
/// does not fit.
template <std::unsigned_integral Number>
[[nodiscard]] Number readNumber(utils::json::decoder::Value& value) {
    const auto number = utils::numeric::parseLeadingDigits<Number>(value.parseNumberString());
    if (!number)
        value.throwRangeError(0, std::numeric_limits<Number>::max());
    return *number;
}

/// As `readNumber`, but the whole number must be digits: a fraction or an exponent is out of range.
template <std::unsigned_integral Number>
[[nodiscard]] Number readWholeNumber(utils::json::decoder::Value& value) {
    const auto number = utils::numeric::parseDigits<Number>(value.parseNumberString());
    if (!number)
        value.throwRangeError(0, std::numeric_limits<Number>::max());
    return *number;
}

} // namespace corvane::workbench::plugins::s7Driver
