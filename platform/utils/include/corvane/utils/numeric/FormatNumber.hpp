#pragma once

#include <array>
#include <charconv>
#include <concepts>
#include <limits>
#include <string_view>

namespace corvane::utils::numeric::detail {

/// A number's decimal text, kept in place: nothing is allocated, and no locale is asked.
template <std::integral Number>
class FormattedNumber {
public:
    explicit FormattedNumber(Number number)
        : end_(std::to_chars(text_.data(), text_.data() + text_.size(), number).ptr) {}
    FormattedNumber(const FormattedNumber&) = delete;
    FormattedNumber& operator=(const FormattedNumber&) = delete;

    /// Valid as long as this object lives.
    [[nodiscard]] std::string_view view() const { return {text_.data(), end_}; }

private:
    // One for the last digit, which digits10 does not count, and one for the sign.
    std::array<char, std::numeric_limits<Number>::digits10 + 2> text_;
    char* end_;
};

/// Decimal text without leading zeros, "-" in front of a negative number: at most 5 characters for
/// an unsigned 16-bit number, 20 for any. To be used where it stands, since the text lives in the
/// result:
///
///     text.append(formatNumber(index).view());
template <std::integral Number>
[[nodiscard]] FormattedNumber<Number> formatNumber(Number number) {
    return FormattedNumber<Number>(number);
}

} // namespace corvane::utils::numeric::detail
