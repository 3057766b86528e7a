#include "workbench/core/memory/MemoryMap.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <algorithm>
#include <iterator>
#include <utility>

namespace corvane::workbench::core {

std::vector<MemoryOverlap> overlapsOf(std::span<const MemoryPiece> sorted) {
    std::vector<MemoryOverlap> overlaps;
    std::size_t farthest = 0;
    for (std::size_t i = 1; i < sorted.size(); ++i) {
        const auto& piece = sorted[i];
        const auto reach = sorted[farthest].end;
        if (piece.begin < reach)
            overlaps.push_back({i, farthest, piece.begin, std::min(piece.end, reach)});
        if (piece.end > reach)
            farthest = i;
    }
    return overlaps;
}

MemoryMap::MemoryMap(MemorySpace space, std::vector<MemoryPiece> pieces)
    : space_(std::move(space)), pieces_(std::move(pieces)) {
    sortPieces(pieces_);
    overlaps_ = overlapsOf(pieces_);
    fillRuns();
}

// Who holds which bits: of several pieces the one that begins first.
void MemoryMap::fillRuns() {
    std::vector<Run> owned;
    owned.reserve(pieces_.size());
    reach_.reserve(pieces_.size());
    std::uint64_t reach = 0;
    for (std::size_t i = 0; i != pieces_.size(); ++i) {
        const auto& piece = pieces_[i];
        if (piece.begin > reach) {
            owned.push_back({reach, piece.begin, kGap, false});
            ++gapCount_;
            reach = piece.begin;
        }
        if (piece.end > reach)
            owned.push_back({reach, piece.end, i, false});
        reach = std::max(reach, piece.end);
        reach_.push_back(reach);
    }
    splitShared(std::move(owned));
}

// Both come in order, so that one walk through both does it.
void MemoryMap::splitShared(std::vector<Run> owned) {
    if (overlaps_.empty()) {
        runs_ = std::move(owned);
        return;
    }
    auto overlap = overlaps_.begin();
    std::uint64_t sharedEnd = 0; // of those that lie behind
    for (auto& run : owned) {
        while (run.begin < run.end) {
            for (; overlap != overlaps_.end() && overlap->begin <= run.begin; ++overlap)
                sharedEnd = std::max(sharedEnd, overlap->end);
            const bool shared = run.begin < sharedEnd;
            auto end = shared ? std::min(run.end, sharedEnd) : run.end;
            if (!shared && overlap != overlaps_.end())
                end = std::min(end, overlap->begin);
            const auto& latest = runs_.empty() ? run : runs_.back();
            if (&latest != &run && latest.piece == run.piece && latest.shared == shared)
                runs_.back().end = end;
            else
                runs_.push_back({run.begin, end, run.piece, shared});
            run.begin = end;
        }
    }
}

std::size_t MemoryMap::runAt(std::uint64_t bit) const {
    const auto after = std::ranges::upper_bound(runs_, bit, {}, &Run::begin);
    return static_cast<std::size_t>(std::distance(runs_.begin(), after)) - 1;
}

std::vector<std::size_t> MemoryMap::piecesAt(std::uint64_t bit, std::size_t most) const {
    std::vector<std::size_t> found;
    const auto after = std::ranges::upper_bound(pieces_, bit, {}, &MemoryPiece::begin);
    auto first = static_cast<std::size_t>(std::distance(pieces_.begin(), after));
    const auto end = first;
    while (first != 0 && reach_[first - 1] > bit)
        --first;
    for (; first != end && found.size() != most; ++first)
        if (pieces_[first].end > bit)
            found.push_back(first);
    return found;
}

void MemoryMapBuilder::add(model::Element& element) {
    const auto place = places_.placeOf(element);
    if (place && place->owner == space_.owner && place->area == space_.area)
        pieces_.push_back(place->piece);
}

MemoryMap memoryMapOf(MemorySpace space) {
    const auto elements = space.owner->childElements();
    MemoryMapBuilder builder(std::move(space));
    forEachElement(elements, [&](model::Element& element) { builder.add(element); });
    return builder.take();
}

std::vector<MemoryLine> memoryLines(const MemoryMap& map, unsigned bytesPerRow) {
    constexpr std::uint64_t kFewestLeftOut = 2;
    const std::uint64_t rowBits = std::uint64_t{8} * bytesPerRow;
    const std::uint64_t rowCount =
        map.end() / rowBits + (map.end() % rowBits == 0 ? std::uint64_t{0} : std::uint64_t{1});
    std::vector<MemoryLine> lines;
    std::size_t run = 0;
    for (std::uint64_t row = 0; row < rowCount;) {
        while (map.runs()[run].end <= row * rowBits)
            ++run;
        lines.push_back({row * bytesPerRow, 1, run});
        ++row;
        // The run holds the row's first bit: the rows that it fills show nothing new.
        const auto filled = map.runs()[run].end / rowBits;
        if (filled < row + kFewestLeftOut)
            continue;
        lines.push_back({row * bytesPerRow, filled - row, run});
        row = filled;
    }
    return lines;
}

std::vector<MemorySegment> segmentsOf(const MemoryMap& map, const MemoryLine& line,
                                      unsigned bytesPerRow) {
    const auto begin = line.firstByte * 8;
    const auto rowBits = std::uint64_t{8} * bytesPerRow;
    const auto end = map.end() - begin < rowBits ? map.end() : begin + rowBits;
    std::vector<MemorySegment> segments;
    for (const auto& run : map.runs().subspan(line.firstRun)) {
        if (run.begin >= end)
            break;
        const bool goesOn = !segments.empty() && segments.back().piece == run.piece;
        segments.push_back(
            {std::max(run.begin, begin), std::min(run.end, end), run.piece, run.shared, !goesOn});
    }
    return segments;
}

} // namespace corvane::workbench::core
