#pragma once

#include <cstddef>
#include <string_view>

/// The prefix that names a data block in front of an address, "DB12.".
namespace corvane::workbench::plugins::s7Driver {

inline constexpr std::string_view kDataBlockMarker = "DB";

/// The position of the dot where `text` begins with "DB", at least one digit and a dot; the size of
/// the text where it does not.
[[nodiscard]] std::size_t dataBlockNumberEnd(std::string_view text);

/// Where the whole text is "DB", digits, ".DB" and perhaps digits, the part from the second "DB"
/// on: DB3.DB12 becomes DB12. Any other text comes back as it is, DB3.DBX0.0 and DB3.DBW8 too: only
/// the form that old projects hold is rewritten. The result views the argument.
[[nodiscard]] std::string_view stripDataBlockPrefix(std::string_view text);
[[nodiscard]] std::u16string_view stripDataBlockPrefix(std::u16string_view text);

} // namespace corvane::workbench::plugins::s7Driver
