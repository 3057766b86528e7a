#include "prepare/Constants.hpp"

#include "dbimport/facts/FoldCase.hpp"

#include <algorithm>
#include <charconv>
#include <limits>

namespace corvane::workbench::plugins::s7Driver::prepare {

namespace {

class Expression {
public:
    Expression(std::string_view text, ConstantLookup constantNamed)
        : left_(text), constantNamed_(constantNamed) {}

    Value value() {
        std::int64_t sum = 0;
        bool negative = takeSign().value_or(false);
        while (true) {
            const auto term = takeTerm();
            if (!term)
                return {.missing = std::move(missing_)};
            sum += negative ? -*term : *term;
            if (sum < kLeast || sum > kMost)
                return {};
            skipBlanks();
            if (left_.empty())
                return {.number = static_cast<std::int32_t>(sum), .missing = {}};
            const auto sign = takeSign();
            if (!sign)
                return {};
            negative = *sign;
        }
    }

private:
    static constexpr std::int64_t kLeast = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();

    void skipBlanks() {
        left_.remove_prefix(std::min(left_.find_first_not_of(" \t\r\n"), left_.size()));
    }

    // Whether it is a minus; empty where it is no sign.
    std::optional<bool> takeSign() {
        skipBlanks();
        if (left_.empty() || (left_.front() != '-' && left_.front() != '+'))
            return std::nullopt;
        const bool negative = left_.front() == '-';
        left_.remove_prefix(1);
        return negative;
    }

    std::optional<std::int64_t> takeTerm() {
        skipBlanks();
        if (left_.starts_with('#'))
            left_.remove_prefix(1);
        if (left_.empty())
            return std::nullopt;
        if (left_.front() >= '0' && left_.front() <= '9')
            return takeNumber();
        const bool quoted = left_.front() == '"';
        if (quoted)
            left_.remove_prefix(1);
        const std::size_t end =
            std::min(left_.find_first_of(quoted ? "\"" : "+- \t\r\n"), left_.size());
        const std::string_view name = left_.substr(0, end);
        left_.remove_prefix(std::min(end + (quoted ? 1 : 0), left_.size()));
        std::string folded;
        assignFolded(folded, name);
        const auto value = constantNamed_(folded);
        if (!value)
            missing_ = name;
        return value;
    }

    std::optional<std::int64_t> takeNumber() {
        std::int64_t number = 0;
        const auto [end, error] =
            std::from_chars(left_.data(), left_.data() + left_.size(), number);
        if (error != std::errc() || number > kMost + 1)
            return std::nullopt;
        left_.remove_prefix(static_cast<std::size_t>(end - left_.data()));
        return number;
    }

    std::string_view left_;
    ConstantLookup constantNamed_;
    std::string missing_;
};

} // namespace

Value valueOf(std::string_view expression, ConstantLookup constantNamed) {
    return Expression(expression, constantNamed).value();
}

} // namespace corvane::workbench::plugins::s7Driver::prepare
