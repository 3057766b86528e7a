#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What lies where in the memories of devices, as the elements themselves say
/// (skill::Element::memoryUse). Nothing here knows a device's own words.
namespace corvane::workbench::core {

/// A memory of the project: that of a block, or a named area of a device.
struct MemorySpace {
    const model::Element* owner; // the block, or the device
    std::string area;            // empty for a block

    friend bool operator==(const MemorySpace&, const MemorySpace&) = default;
};

/// An element that holds a piece of a memory: its bits from `begin` to below `end`.
struct MemoryPiece {
    model::Element* element;
    std::uint64_t begin;
    std::uint64_t end;
};

/// A piece, and the memory that it is one of. What is a view belongs to the element.
struct PlacedPiece {
    const model::Element* owner;
    std::string_view area;
    MemoryPiece piece;
};

/// Finds where elements lie. It remembers what it has found out about the element above, so that
/// siblings, asked for one after the other, cost little; it must not outlive a change of the tree.
class MemoryPlaces {
public:
    /// The piece of memory that an element holds; nothing where it holds none.
    [[nodiscard]] std::optional<PlacedPiece> placeOf(model::Element& element);

    /// The device that an element stands below; null where there is none.
    [[nodiscard]] const model::Element* deviceOf(const model::Element& element);

private:
    void lookAbove(const model::Element& element);

    const model::Element* parent_ = nullptr; // that was looked from
    const model::Element* block_ = nullptr;
    const model::Element* device_ = nullptr;
};

/// The memory that a user means by an element: the one that it is or holds a piece of, else that of
/// the nearest block above. Nothing for an element that has nothing to do with any.
[[nodiscard]] std::optional<MemorySpace> memorySpaceOf(model::Element& element);

/// By what the device knows a memory, "DB5"; may be empty.
[[nodiscard]] std::string designationOf(const MemorySpace& space);

/// Brings pieces into the order of their first bits; those that begin together keep their order.
void sortPieces(std::vector<MemoryPiece>& pieces);

} // namespace corvane::workbench::core
