#pragma once

#include "dbimport/tree/DataBlockNode.hpp"

#include <utility>

namespace corvane::workbench::plugins::s7Driver {

/// A struct with its members, or the body of a data block.
class StructNode final : public ParentNode {
public:
    /// A transparent struct, the body of a data block, is no element of its own: its members are
    /// written in its place.
    StructNode(std::string_view name, ExternalAccess access, bool transparent);

    [[nodiscard]] bool transparent() const { return transparent_; }

    /// The child must be complete, with all its own children.
    void addChild(NodeOwner<DataBlockNode> child) override {
        membersSize_ += child->documentSize(0);
        ParentNode::addChild(std::move(child));
    }

    void writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                       ElementPath& path) override;
    [[nodiscard]] double documentSize(std::size_t indexSize) const override;

private:
    void writeMembers(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                      ElementPath& path);

    bool transparent_;
    double membersSize_ = 0; // in the document; summed up while the members are at hand
};

} // namespace corvane::workbench::plugins::s7Driver
