#include "workbench/core/import/IdentityIndex.hpp"

#include <corvane/workbench/host/Staging.hpp>

#include <bit>
#include <functional>
#include <ranges>

namespace corvane::workbench::core {

IdentityIndex::IdentityIndex(std::span<const std::unique_ptr<model::Element>> elements)
    : slots_(std::bit_ceil(elements.size() + 1)) {
    // From the last to the first, each put before the others of its slot: so the first comes first.
    for (const auto& element : std::views::reverse(elements)) {
        if (host::Staging::isPaired(*element))
            continue;
        const auto id = element->getSkillElement()->importId();
        if (!id)
            continue;
        auto& first = slots_[slotOf(element->elementClass(), *id)];
        entries_.push_back({*id, element.get(), first});
        first = static_cast<std::uint32_t>(entries_.size());
    }
}

model::Element* IdentityIndex::take(const skill::Element::Class& elementClass,
                                    const utils::core::Uuid& id) {
    auto* link = &slots_[slotOf(elementClass, id)];
    while (*link != 0) {
        Entry& entry = entries_[*link - 1];
        if (entry.id == id && &entry.element->elementClass() == &elementClass) {
            *link = entry.next;
            return entry.element;
        }
        link = &entry.next;
    }
    return nullptr;
}

std::size_t IdentityIndex::slotOf(const skill::Element::Class& elementClass,
                                  const utils::core::Uuid& id) const {
    const std::size_t classHash = std::hash<const void*>{}(&elementClass) >> 4;
    return (std::hash<utils::core::Uuid>{}(id) ^ classHash) & (slots_.size() - 1);
}

} // namespace corvane::workbench::core
