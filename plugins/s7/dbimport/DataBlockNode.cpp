#include "dbimport/DataBlockNode.hpp"

#include <utility>

namespace corvane::workbench::plugins::s7Driver {

DataBlockNode::DataBlockNode(std::string name, ExternalAccess access)
    : name_(std::move(name)), access_(access) {}

DataBlockNode::~DataBlockNode() = default;

void DataBlockNode::addChild(std::unique_ptr<DataBlockNode> child) {
    children_.push_back(std::move(child));
}

void DataBlockNode::writeChildren(utils::json::encoder::Array& targetArray,
                                  MemoryPosition& position, ElementPath& path) {
    for (const std::unique_ptr<DataBlockNode>& child : children_)
        child->writeElements(targetArray, position, path);
}

double DataBlockNode::childrenDocumentSize() const {
    double size = 0;
    for (const std::unique_ptr<DataBlockNode>& child : children_)
        size += child->documentSize(0);
    return size;
}

} // namespace corvane::workbench::plugins::s7Driver
