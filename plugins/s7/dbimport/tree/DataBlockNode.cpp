#include "dbimport/tree/DataBlockNode.hpp"

namespace corvane::workbench::plugins::s7Driver {

const DataBlockNode::Children& DataBlockNode::children() const {
    static constexpr Children kNone;
    return kNone;
}

void ParentNode::writeChildren(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                               ElementPath& path) {
    for (const NodeOwner<DataBlockNode>& child : children_)
        child->writeElements(targetArray, position, path);
}

} // namespace corvane::workbench::plugins::s7Driver
