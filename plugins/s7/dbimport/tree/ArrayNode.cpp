#include "dbimport/tree/ArrayNode.hpp"

#include "dbimport/facts/Messages.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/MemoryPosition.hpp"

namespace corvane::workbench::plugins::s7Driver {

ArrayNode::ArrayNode(std::string_view name, ExternalAccess access,
                     std::span<const Dimension> dimensions, std::uint64_t place)
    : ParentNode(name, access), index_(dimensions), place_(place) {}

void ArrayNode::writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                              ElementPath& path) try {
    path.budget().spend();
    if (!access().externalAccessible) {
        path.notes().noteHidden();
        return;
    }
    if (children().size() != 1)
        fail(Message::severalElementTypes);
    DataBlockNode& node = *children().front();
    const std::uint64_t count = index_.elementCount();
    path.budget().require(count);
    position.alignToWord();
    for (std::uint64_t element = 0; element < count; ++element) {
        path.setIndexSuffix(index_.text());
        node.writeElements(targetArray, position, path);
        // So that every run of the last dimension starts on a fresh byte, in an array of Bool too.
        if (index_.step())
            position.alignToByte();
    }
    path.clearIndexSuffix();
    position.alignToWord();
} catch (Fault& fault) {
    fault.locate(place_);
    throw;
}

double ArrayNode::documentSize(std::size_t) const {
    if (!access().externalAccessible || children().size() != 1)
        return 0;
    return static_cast<double>(index_.elementCount()) *
           children().front()->documentSize(index_.largestTextSize());
}

} // namespace corvane::workbench::plugins::s7Driver
