#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// The number at the start of `text`, read as the standard library's `std::stoi` reads it: blanks
/// in front are skipped, a sign is taken, and what follows the digits is not looked at, so that
/// "20x" is 20. Throws std::invalid_argument "invalid stoi argument" where there is no digit and
/// std::out_of_range "stoi argument out of range" where the number does not fit 32 bits; both are
/// faults at `place`, where the text begins in the file, in bytes from 0.
[[nodiscard]] std::int32_t readDecimal(std::string_view text,
                                       std::optional<std::uint64_t> place = std::nullopt);

} // namespace corvane::workbench::plugins::s7Driver
