#pragma once

#include "workbench/core/memory/MemorySpace.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// Bits that two pieces hold: `piece` begins in what `before` has, the one before it that reaches
/// farthest. Both are positions in the sorted pieces.
struct MemoryOverlap {
    std::size_t piece;
    std::size_t before;
    std::uint64_t begin;
    std::uint64_t end;
};

/// One for each piece that begins where others already are, in the order of the sorted pieces: no
/// more than there are pieces, in one sweep.
[[nodiscard]] std::vector<MemoryOverlap> overlapsOf(std::span<const MemoryPiece> sorted);

/// What a memory holds, from its first bit to the last one that is taken. Made once of `n` pieces
/// in O(n log n), however far they reach.
class MemoryMap {
public:
    static constexpr std::size_t kGap = std::numeric_limits<std::size_t>::max();

    /// Neighbouring bits that are all one piece's, or no one's. Of several pieces the one that
    /// begins first holds the bits, and they are `shared`.
    struct Run {
        std::uint64_t begin;
        std::uint64_t end;
        std::size_t piece; // or kGap
        bool shared;
        friend bool operator==(const Run&, const Run&) = default;
    };

    MemoryMap(MemorySpace space, std::vector<MemoryPiece> pieces);

    [[nodiscard]] const MemorySpace& space() const { return space_; }
    /// In the order of their first bits.
    [[nodiscard]] std::span<const MemoryPiece> pieces() const { return pieces_; }
    [[nodiscard]] std::span<const MemoryOverlap> overlaps() const { return overlaps_; }
    /// One behind the other, without holes, from bit 0 to `end`.
    [[nodiscard]] std::span<const Run> runs() const { return runs_; }
    /// Behind the last bit that is taken.
    [[nodiscard]] std::uint64_t end() const { return runs_.empty() ? 0 : runs_.back().end; }
    [[nodiscard]] std::size_t gapCount() const { return gapCount_; }

    /// The pieces that hold a bit, the first `most` of them in their order.
    [[nodiscard]] std::vector<std::size_t> piecesAt(std::uint64_t bit, std::size_t most) const;

    /// The position in `runs` of the one that holds a bit below `end`.
    [[nodiscard]] std::size_t runAt(std::uint64_t bit) const;

private:
    void fillRuns();
    void splitShared(std::vector<Run> owned);

    MemorySpace space_;
    std::vector<MemoryPiece> pieces_;
    std::vector<std::uint64_t> reach_; // for each piece, how far it and those before it reach
    std::vector<MemoryOverlap> overlaps_;
    std::vector<Run> runs_;
    std::size_t gapCount_ = 0;
};

/// Collects the pieces of one memory from the elements below its owner.
class MemoryMapBuilder {
public:
    explicit MemoryMapBuilder(MemorySpace space) : space_(std::move(space)) {}

    /// Takes an element's piece, if it is one of this memory.
    void add(model::Element& element);
    [[nodiscard]] MemoryMap take() { return {std::move(space_), std::move(pieces_)}; }

private:
    MemorySpace space_;
    MemoryPlaces places_;
    std::vector<MemoryPiece> pieces_;
};

/// The map of a memory, at once.
[[nodiscard]] MemoryMap memoryMapOf(MemorySpace space);

/// A line of a map that is shown in rows of bytes.
struct MemoryLine {
    std::uint64_t firstByte;
    std::uint64_t rows;   // 1, or how many rows that show nothing new this line stands for
    std::size_t firstRun; // the position of the run that its first bit is in
};

/// The lines of a map in rows of `bytesPerRow`, which is not 0. Where rows are filled by one and
/// the same piece or gap, the first is shown and the others, if there are several, are one line: so
/// there are no more lines than some per piece, however large the numbers.
[[nodiscard]] std::vector<MemoryLine> memoryLines(const MemoryMap& map, unsigned bytesPerRow);

/// What of a run stands in one row.
struct MemorySegment {
    std::uint64_t begin; // bits of the memory
    std::uint64_t end;
    std::size_t piece; // or MemoryMap::kGap
    bool shared;
    bool isFirst; // of its piece, or gap, in this row
};

/// What stands in the first row of a line, from left to right; a row at the memory's end is cut off
/// there.
[[nodiscard]] std::vector<MemorySegment> segmentsOf(const MemoryMap& map, const MemoryLine& line,
                                                    unsigned bytesPerRow);

} // namespace corvane::workbench::core
