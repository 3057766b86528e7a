#include "workbench/gui/memory/MemoryText.hpp"

#include "workbench/core/memory/MemoryRange.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QStringList>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::MemoryPanel";
constexpr std::uint64_t kByte = 8; // bits

} // namespace

QString summaryOf(const core::MemoryMap& map) {
    auto name = toQt(std::string_view(map.space().owner->path()));
    if (const auto designation = core::designationOf(map.space()); !designation.empty())
        name = translated(kContext, "{} ({})", {name, toQt(std::string_view(designation))});
    const auto bytes = map.end() / kByte + (map.end() % kByte == 0 ? 0U : 1U);
    return translated(kContext, "{}: {}, {}, {}, {}",
                      {name, counted(kContext, "1 byte", "{} bytes", bytes),
                       counted(kContext, "1 element", "{} elements", map.pieces().size()),
                       counted(kContext, "1 gap", "{} gaps", map.gapCount()),
                       counted(kContext, "1 overlap", "{} overlaps", map.overlaps().size())});
}

QString describe(const core::MemoryPiece& piece) {
    const auto summary = piece.element->getSkillElement()->summary();
    QStringList lines{toQt(std::string_view(piece.element->path()))};
    for (const auto& text : {summary.type, summary.address})
        if (!text.empty())
            lines += toQt(std::u16string_view(text));
    lines += toQt(std::string_view(core::memoryRangeText(piece.begin, piece.end)));
    return lines.join(QLatin1Char('\n'));
}

QString describeBit(const core::MemoryMap& map, std::uint64_t bit) {
    QStringList parts;
    for (const auto piece : map.piecesAt(bit, kMostAtABit))
        parts += describe(map.pieces()[piece]);
    if (parts.size() > 1)
        parts.prepend(translated(kContext, "Several elements lie here:"));
    if (!parts.isEmpty())
        return parts.join(QStringLiteral("\n\n"));
    const auto& gap = map.runs()[map.runAt(bit)];
    const auto range = core::memoryRangeText(gap.begin, gap.end);
    return translated(kContext, "Nothing lies here: {}", {toQt(std::string_view(range))});
}

} // namespace corvane::workbench::gui
