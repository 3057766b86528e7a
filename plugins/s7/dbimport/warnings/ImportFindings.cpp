#include "dbimport/warnings/ImportFindings.hpp"

#include <algorithm>
#include <functional>

namespace corvane::workbench::plugins::s7Driver {

namespace {

bool isAny(const LayoutNotes::Counts& counts) {
    return std::ranges::any_of(counts, std::identity());
}

} // namespace

void ImportFindings::addForeignNames(const std::string& block, const ForeignNames& names) {
    if (names.count() != 0 && foreignBlocks++ < kForeignBlocksKept)
        firstForeign.push_back({block, names});
}

void ImportFindings::addLayout(const FoundBlock& block, const RootNode& root,
                               const LayoutNotes& notes, std::uint64_t bytes) {
    if (bytes > kAddressableBytes) {
        if (large.count() == 0)
            largeBytes = bytes;
        large.add(block);
    }
    const bool isWithoutItem = isAny(notes.withoutItem());
    if (!notes.hidden() && !isWithoutItem)
        return;
    std::ranges::transform(withoutItem, notes.withoutItem(), withoutItem.begin(), std::plus());
    if (!notes.hidden() && firstWithoutItem)
        return;
    const LayoutFindings layout = findInLayout(
        root, {.shift = notes.hidden(), .withoutItem = isWithoutItem && !firstWithoutItem});
    if (layout.shift && shiftedBlocks++ == 0)
        firstHidden = {block, *layout.shift};
    if (layout.withoutItem && !firstWithoutItem)
        firstWithoutItem = {block.place, layout.withoutItem->declaration};
}

} // namespace corvane::workbench::plugins::s7Driver
