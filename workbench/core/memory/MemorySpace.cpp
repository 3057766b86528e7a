#include "workbench/core/memory/MemorySpace.hpp"

#include <algorithm>
#include <limits>
#include <utility>
#include <variant>

namespace corvane::workbench::core {

namespace {

using data::MemoryBlock;
using data::MemoryDevice;
using data::MemoryExtent;

data::MemoryUse useOf(const model::Element& element) {
    return element.getSkillElement()->memoryUse();
}

// A plug-in may say any numbers.
std::uint64_t endOf(const MemoryExtent& extent) {
    constexpr auto kMost = std::numeric_limits<std::uint64_t>::max();
    return extent.size > kMost - extent.offset ? kMost : extent.offset + extent.size;
}

} // namespace

void MemoryPlaces::lookAbove(const model::Element& element) {
    const auto* const parent = element.parentElement();
    if (parent == parent_ && parent != nullptr)
        return;
    parent_ = parent;
    block_ = nullptr;
    device_ = nullptr;
    for (const auto* above = parent; above != nullptr && device_ == nullptr;
         above = above->parentElement()) {
        const auto use = useOf(*above);
        if (block_ == nullptr && std::holds_alternative<MemoryBlock>(use))
            block_ = above;
        else if (std::holds_alternative<MemoryDevice>(use))
            device_ = above;
    }
}

std::optional<PlacedPiece> MemoryPlaces::placeOf(model::Element& element) {
    const auto use = useOf(element);
    const auto* const extent = std::get_if<MemoryExtent>(&use);
    if (extent == nullptr || extent->size == 0)
        return std::nullopt;
    lookAbove(element);
    const auto* const owner = extent->area.empty() ? block_ : device_;
    if (owner == nullptr || endOf(*extent) == extent->offset)
        return std::nullopt;
    return PlacedPiece{owner, extent->area, {&element, extent->offset, endOf(*extent)}};
}

const model::Element* MemoryPlaces::deviceOf(const model::Element& element) {
    lookAbove(element);
    return device_;
}

std::optional<MemorySpace> memorySpaceOf(model::Element& element) {
    if (std::holds_alternative<MemoryBlock>(useOf(element)))
        return MemorySpace{&element, {}};
    if (const auto place = MemoryPlaces().placeOf(element))
        return MemorySpace{place->owner, std::string(place->area)};
    for (const auto* above = element.parentElement(); above != nullptr;
         above = above->parentElement())
        if (std::holds_alternative<MemoryBlock>(useOf(*above)))
            return MemorySpace{above, {}};
    return std::nullopt;
}

std::string designationOf(const MemorySpace& space) {
    if (!space.area.empty())
        return space.area;
    const auto use = useOf(*space.owner);
    const auto* const block = std::get_if<MemoryBlock>(&use);
    return block == nullptr ? std::string() : block->designation;
}

// As a rule they come in order already: an import writes elements as they lie.
void sortPieces(std::vector<MemoryPiece>& pieces) {
    if (std::ranges::is_sorted(pieces, {}, &MemoryPiece::begin))
        return;
    std::vector<std::pair<std::uint64_t, std::size_t>> order;
    order.reserve(pieces.size());
    for (std::size_t i = 0; i != pieces.size(); ++i)
        order.emplace_back(pieces[i].begin, i);
    std::ranges::sort(order);
    std::vector<MemoryPiece> sorted;
    sorted.reserve(pieces.size());
    for (const auto& [begin, position] : order)
        sorted.push_back(pieces[position]);
    pieces = std::move(sorted);
}

} // namespace corvane::workbench::core
