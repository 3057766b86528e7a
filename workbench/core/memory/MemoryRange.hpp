#pragma once

#include <cstdint>
#include <string>

namespace corvane::workbench::core {

/// Bits of a memory in words, translated, UTF-8: "bit 4.1", "bits 4.1 to 4.3", "byte 2", "bytes 2
/// to 5". `begin` is below `end`.
[[nodiscard]] std::string memoryRangeText(std::uint64_t begin, std::uint64_t end);

/// A bit by its byte and its number in that: "4.1".
[[nodiscard]] std::string bitText(std::uint64_t bit);

} // namespace corvane::workbench::core
