#pragma once

#include <corvane/workbench/ui/Preparer.hpp>

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// Why something is left out; the texts stand in Reasons.def.
enum class Reason : std::uint8_t {
#define S7_LEFT_OUT(name, reason, help) name,
#include "prepare/Reasons.def"
#undef S7_LEFT_OUT
};

/// Where something stands in the sources.
struct Place {
    std::uint32_t file = 0;
    std::uint32_t at = 0;   ///< in bytes from 0, of the file's text
    std::uint32_t line = 1; ///< from 1

    friend auto operator<=>(const Place&, const Place&) = default;
};

/// Why a declaration cannot be made plain.
struct Failure {
    Reason reason;
    Place place;
    std::string subject;
    std::optional<Place> other = std::nullopt;
};

/// Thrown where a declaration is read; only that declaration is given up.
class DeclarationFault {
public:
    explicit DeclarationFault(Failure what) : failure(std::move(what)) {}
    Failure failure;
};

/// The column of a place in its file's text, from 1 in code points; empty in a line that is too
/// long for anybody to count along.
[[nodiscard]] std::optional<std::uint64_t> columnOf(std::string_view text, std::uint32_t at);

/// What the user reads: `name` is what is left out, `otherPlace` where `failure.other` is.
[[nodiscard]] ui::LeftOutSource leftOut(const Failure& failure, std::string_view text,
                                        std::string name, std::string_view otherPlace);

} // namespace corvane::workbench::plugins::s7Driver::prepare
