#pragma once

#include <corvane/utils/core/Uuid.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace corvane::workbench::core {

/// Finds elements of a level by class and import identity, in constant time whatever their number:
/// a search through the siblings for each would make an import of n elements cost n * n.
class IdentityIndex {
public:
    /// Indexes the elements that are not paired and have an identity.
    explicit IdentityIndex(std::span<const std::unique_ptr<model::Element>> elements);

    /// The first element of that class and identity that has not been taken yet, and takes it; null
    /// if there is none.
    [[nodiscard]] model::Element* take(const skill::Element::Class& elementClass,
                                       const utils::core::Uuid& id);

private:
    struct Entry {
        utils::core::Uuid id;
        model::Element* element = nullptr;
        std::uint32_t next = 0; // entry of the same slot, counted from 1, in order; 0 ends
    };

    [[nodiscard]] std::size_t slotOf(const skill::Element::Class& elementClass,
                                     const utils::core::Uuid& id) const;

    std::vector<Entry> entries_;
    std::vector<std::uint32_t> slots_; // first entry, counted from 1
};

} // namespace corvane::workbench::core
