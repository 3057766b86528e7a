#pragma once

#include "dbimport/tree/ArrayIndex.hpp"
#include "dbimport/tree/DataBlockNode.hpp"

#include <span>

namespace corvane::workbench::plugins::s7Driver {

/// An array. Its only child is the node of its element type, which bears the array's name and is
/// written once per element; the array writes nothing of its own, so that its elements are siblings
/// of its neighbours.
class ArrayNode final : public ParentNode {
public:
    /// Throws std::runtime_error as ArrayIndex does.
    ArrayNode(std::string_view name, ExternalAccess access, std::span<const Dimension> dimensions);

    /// At the lower bounds, before a walk and after it.
    [[nodiscard]] const ArrayIndex& index() const { return index_; }

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    ArrayIndex index_;
};

} // namespace corvane::workbench::plugins::s7Driver
