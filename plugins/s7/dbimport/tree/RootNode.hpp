#pragma once

#include "dbimport/tree/DataBlockNode.hpp"

namespace corvane::workbench::plugins::s7Driver {

/// A data block. Its only child is the transparent StructNode that holds its body.
class RootNode final : public ParentNode {
public:
    explicit RootNode(std::string_view name);

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;
};

} // namespace corvane::workbench::plugins::s7Driver
