#include "workbench/core/memory/MemoryWarnings.hpp"

#include "workbench/core/memory/MemoryMap.hpp"
#include "workbench/core/memory/MemoryRange.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <functional>
#include <utility>
#include <variant>

namespace corvane::workbench::core {

namespace {

constexpr std::string_view kContext = "corvane::workbench::core::MemoryWarnings";

} // namespace

std::u16string messageOf(const MemoryWarning& warning) {
    const auto space = memorySpaceOf(*warning.element);
    auto designation = space ? designationOf(*space) : std::string();
    if (designation.empty() && space)
        designation = space->owner->path();
    std::u16string text;
    if (warning.begin == warning.end)
        i18n::fillTranslated(text, kContext, "is {}, and so is “{}”",
                             {designation, warning.other->path()});
    else
        i18n::fillTranslated(
            text, kContext, "shares {} of {} with “{}”",
            {memoryRangeText(warning.begin, warning.end), designation, warning.other->path()});
    return text;
}

std::size_t MemoryWarningSearch::KeyHash::operator()(const Key& key) const {
    return std::hash<const void*>()(key.owner) ^ std::hash<std::string>()(key.name);
}

void MemoryWarningSearch::add(model::Element& element) {
    if (const auto place = places_.placeOf(element)) {
        groupOf(*place).pieces.push_back(place->piece);
        return;
    }
    const auto use = element.getSkillElement()->memoryUse();
    if (const auto* const block = std::get_if<data::MemoryBlock>(&use))
        addBlock(element, block->designation);
}

void MemoryWarningSearch::addBlock(model::Element& block, const std::string& designation) {
    if (designation.empty())
        return;
    const auto [first, isNew] =
        firstBlocks_.try_emplace({places_.deviceOf(block), designation}, &block);
    if (!isNew)
        warnings_.push_back({&block, first->second, 0, 0});
}

// Neighbours lie in the same memory as a rule.
MemoryWarningSearch::Group& MemoryWarningSearch::groupOf(const PlacedPiece& place) {
    if (!groups_.empty()) {
        auto& group = groups_[latest_];
        if (group.space.owner == place.owner && group.space.area == place.area)
            return group;
    }
    const auto [found, isNew] =
        groupsByKey_.try_emplace({place.owner, std::string(place.area)}, groups_.size());
    if (isNew)
        groups_.push_back({{place.owner, std::string(place.area)}, {}});
    latest_ = found->second;
    return groups_[latest_];
}

bool MemoryWarningSearch::lookOnce() {
    if (looked_ == groups_.size())
        return false;
    auto pieces = std::exchange(groups_[looked_++].pieces, {});
    sortPieces(pieces);
    for (const auto& overlap : overlapsOf(pieces))
        warnings_.push_back({pieces[overlap.piece].element, pieces[overlap.before].element,
                             overlap.begin, overlap.end});
    return true;
}

std::vector<MemoryWarning> memoryWarnings(ElementList elements) {
    MemoryWarningSearch search;
    forEachElement(elements, [&](model::Element& element) { search.add(element); });
    while (search.lookOnce()) {
    }
    return search.takeWarnings();
}

} // namespace corvane::workbench::core
