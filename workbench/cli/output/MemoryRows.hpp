#pragma once

#include "workbench/core/memory/MemoryMap.hpp"

#include <cstddef>
#include <string>
#include <string_view>

/// What a memory's picture says in words, whatever it is drawn with.
namespace corvane::workbench::cli {

/// A memory as it is to be drawn.
struct MemoryPicture {
    const core::MemoryMap& map;
    unsigned bytesPerRow;
};

/// "/Press/Line (DB51): 120 bytes, 18 elements, 3 gaps, no overlaps".
[[nodiscard]] std::string summaryOf(const core::MemoryMap& map);

/// The path of a piece's element below the memory's owner.
[[nodiscard]] std::string pathBelowOwner(const core::MemoryMap& map, std::size_t piece);

/// A piece's place, path and type: "4.1  Axis/Ready  Bool".
[[nodiscard]] std::string describe(const core::MemoryMap& map, std::size_t piece);

/// "Setpoint shares bytes 2 to 3 with Speed".
[[nodiscard]] std::string describe(const core::MemoryMap& map, const core::MemoryOverlap& overlap);

/// What a line says that stands for several rows.
[[nodiscard]] std::string leftOutText(const core::MemoryMap& map, const core::MemoryLine& line);

/// The name of a piece's element, one character for each control character in it.
[[nodiscard]] std::string nameOf(const core::MemoryMap& map, std::size_t piece);

/// As much of the text as `columns` characters hold, "…" at its end where that is not all.
[[nodiscard]] std::string shortened(std::string_view utf8, std::size_t columns);

/// Whether a piece is shown bit by bit: it is less than a byte.
[[nodiscard]] bool isBits(const core::MemoryPiece& piece);

} // namespace corvane::workbench::cli
