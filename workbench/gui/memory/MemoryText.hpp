#pragma once

#include "workbench/core/memory/MemoryMap.hpp"

#include <QString>

/// What the memory panel says in words; translated.
namespace corvane::workbench::gui {

/// "/Press/Line (DB51): 120 bytes, 18 elements, 3 gaps, no overlaps".
[[nodiscard]] QString summaryOf(const core::MemoryMap& map);

/// An element's path, type, address and bytes, each on a line.
[[nodiscard]] QString describe(const core::MemoryPiece& piece);

/// What lies at a bit: its elements, or the gap.
[[nodiscard]] QString describeBit(const core::MemoryMap& map, std::uint64_t bit);

/// The most elements of one bit that are told of.
inline constexpr std::size_t kMostAtABit = 8;

} // namespace corvane::workbench::gui
