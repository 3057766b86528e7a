#include "dbimport/DataBlockNode.hpp"

#include <utility>

namespace corvane::workbench::plugins::s7Driver {

DataBlockNode::~DataBlockNode() = default;

void DataBlockNode::addChild(NodeOwner<DataBlockNode> child) {
    if (children_ == nullptr)
        children_ = std::make_unique<Children>();
    children_->push_back(std::move(child));
}

const DataBlockNode::Children& DataBlockNode::children() const {
    static constexpr Children kNone;
    return children_ == nullptr ? kNone : *children_;
}

void DataBlockNode::writeChildren(utils::json::encoder::Array& targetArray,
                                  MemoryPosition& position, ElementPath& path) {
    for (const NodeOwner<DataBlockNode>& child : children())
        child->writeElements(targetArray, position, path);
}

double DataBlockNode::childrenDocumentSize() const {
    double size = 0;
    for (const NodeOwner<DataBlockNode>& child : children())
        size += child->documentSize(0);
    return size;
}

} // namespace corvane::workbench::plugins::s7Driver
