#include "dbimport/tree/StructNode.hpp"

#include "dbimport/facts/DocumentKeys.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/MemoryPosition.hpp"

#include <corvane/workbench/config/DocumentKeys.hpp>

namespace corvane::workbench::plugins::s7Driver {

StructNode::StructNode(std::string_view name, ExternalAccess access, bool transparent)
    : ParentNode(name, access), transparent_(transparent) {}

void StructNode::writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                               ElementPath& path) {
    path.budget().spend();
    if (!access().externalAccessible) {
        path.notes().noteHidden();
        return;
    }
    if (transparent_) {
        path.clearIndexSuffix();
        writeMembers(targetArray, position, path);
        return;
    }
    auto entry = targetArray.addObject();
    auto element = entry.addObject(documentKeys::kStruct);
    element.addStringView(config::kNameKey, path.indexedName(nameView()));
    auto members = element.addArray(config::kChildrenKey);
    const ElementPath::Level level(path, nameView());
    writeMembers(members, position, path);
}

double StructNode::documentSize(std::size_t indexSize) const {
    constexpr double kBrackets = 50; // and the keys
    if (!access().externalAccessible)
        return 0;
    return kBrackets + static_cast<double>(nameView().size() + indexSize) + membersSize_;
}

void StructNode::writeMembers(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                              ElementPath& path) {
    position.alignToWord();
    writeChildren(targetArray, position, path);
    position.alignToWord();
}

} // namespace corvane::workbench::plugins::s7Driver
