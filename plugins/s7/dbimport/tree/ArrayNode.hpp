#pragma once

#include "dbimport/tree/ArrayIndex.hpp"
#include "dbimport/tree/DataBlockNode.hpp"

#include <cstdint>
#include <span>

namespace corvane::workbench::plugins::s7Driver {

/// An array. Its only child is the node of its element type, which bears the array's name and is
/// written once per element; the array writes nothing of its own, so that its elements are siblings
/// of its neighbours.
class ArrayNode final : public ParentNode {
public:
    /// The declaration begins at byte `place` of the file, counted from 0. Throws
    /// std::runtime_error as ArrayIndex does.
    ArrayNode(std::string_view name, ExternalAccess access, std::span<const Dimension> dimensions,
              std::uint64_t place = 0);

    /// At the lower bounds, before a walk and after it.
    [[nodiscard]] const ArrayIndex& index() const { return index_; }

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    ArrayIndex index_;
    std::uint64_t place_;
};

} // namespace corvane::workbench::plugins::s7Driver
