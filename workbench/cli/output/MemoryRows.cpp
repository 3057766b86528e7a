#include "workbench/cli/output/MemoryRows.hpp"

#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/memory/MemoryRange.hpp"

#include <corvane/utils/string/ControlCharacters.hpp>

namespace corvane::workbench::cli {

namespace {

constexpr std::uint64_t kByte = 8; // bits

std::string counted(std::uint64_t number, std::string_view what) {
    std::string text = number == 0 ? "no" : std::to_string(number);
    text.append(" ").append(what);
    return number == 1 ? text : text + "s";
}

} // namespace

std::string summaryOf(const core::MemoryMap& map) {
    const auto bytes = map.end() / kByte + (map.end() % kByte == 0 ? 0U : 1U);
    std::string text = map.space().owner->path();
    if (const auto designation = core::designationOf(map.space()); !designation.empty())
        text.append(" (").append(designation).append(")");
    return text + ": " + counted(bytes, "byte") + ", " + counted(map.pieces().size(), "element") +
           ", " + counted(map.gapCount(), "gap") + ", " + counted(map.overlaps().size(), "overlap");
}

std::string pathBelowOwner(const core::MemoryMap& map, std::size_t piece) {
    return map.pieces()[piece].element->path().substr(map.space().owner->path().size() + 1);
}

std::string describe(const core::MemoryMap& map, std::size_t piece) {
    const auto& [element, begin, end] = map.pieces()[piece];
    const bool isWhole = begin % kByte == 0 && !isBits(map.pieces()[piece]);
    return (isWhole ? std::to_string(begin / kByte) : core::bitText(begin)) + "  " +
           pathBelowOwner(map, piece) + "  " + narrow(element->getSkillElement()->summary().type);
}

std::string describe(const core::MemoryMap& map, const core::MemoryOverlap& overlap) {
    return pathBelowOwner(map, overlap.piece) + " shares " +
           core::memoryRangeText(overlap.begin, overlap.end) + " with " +
           pathBelowOwner(map, overlap.before);
}

std::string leftOutText(const core::MemoryMap& map, const core::MemoryLine& line) {
    const auto piece = map.runs()[line.firstRun].piece;
    return std::to_string(line.rows) + " more rows of " +
           (piece == core::MemoryMap::kGap ? "a gap" : nameOf(map, piece));
}

std::string nameOf(const core::MemoryMap& map, std::size_t piece) {
    return utils::string::maskControlCharacters(map.pieces()[piece].element->name());
}

std::string shortened(std::string_view utf8, std::size_t columns) {
    if (widthOf(utf8) <= columns)
        return std::string(utf8);
    if (columns == 0)
        return {};
    constexpr auto kIsContinuation = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xc0U) == 0x80U;
    };
    std::size_t size = 0;
    for (std::size_t kept = 0; size != utf8.size(); ++size)
        if (!kIsContinuation(utf8[size]) && kept++ == columns - 1)
            break;
    return std::string(utf8.substr(0, size)) + "…";
}

bool isBits(const core::MemoryPiece& piece) { return piece.end - piece.begin < kByte; }

} // namespace corvane::workbench::cli
