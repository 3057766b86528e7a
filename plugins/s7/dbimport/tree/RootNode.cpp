#include "dbimport/tree/RootNode.hpp"

namespace corvane::workbench::plugins::s7Driver {

RootNode::RootNode(std::string_view name) : ParentNode(name, ExternalAccess{}) {}

void RootNode::writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                             ElementPath& path) {
    writeChildren(targetArray, position, path);
}

double RootNode::documentSize(std::size_t) const {
    constexpr double kBrackets = 80; // and the keys, and a number
    double size = kBrackets + static_cast<double>(nameView().size());
    for (const NodeOwner<DataBlockNode>& child : children())
        size += child->documentSize(0);
    return size;
}

} // namespace corvane::workbench::plugins::s7Driver
