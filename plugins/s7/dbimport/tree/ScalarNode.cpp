#include "dbimport/tree/ScalarNode.hpp"

#include "dbimport/context/ImportContext.hpp"
#include "dbimport/facts/Messages.hpp"
#include "dbimport/tree/ElementPath.hpp"
#include "dbimport/tree/ItemText.hpp"

namespace corvane::workbench::plugins::s7Driver {

namespace {

const TypeFacts& typeOf(std::string_view keyword) {
    const TypeFacts* const facts = findType(keyword);
    if (facts == nullptr)
        fail(Message::unknownType, keyword);
    return *facts;
}

const model::ImportReference& commandOf(const ImportContext& context, ElementPath& path,
                                        std::string_view name) {
    return path.tracked() ? context.itemCommand(path.itemPath(name)) : context.defaultCommand();
}

} // namespace

static_assert(sizeof(ScalarNode) <= 56, "a large import consists of them");

ScalarNode::ScalarNode(std::string_view name, bool plainName, ExternalAccess access,
                       const TypeFacts& type, std::optional<std::uint64_t> elementCount,
                       const ImportContext& importContext)
    : DataBlockNode(name, access),
      hasElementCount_(elementCount.has_value()),
      plainName_(plainName),
      facts_(&type),
      textLength_(elementCount.value_or(kDefaultTextLength)),
      importContext_(&importContext) {
    if (hasElementCount_ && !type.isText())
        fail(Message::countOnScalar);
}

ScalarNode::ScalarNode(std::string_view name, ExternalAccess access, const TypeFacts& type,
                       std::optional<std::uint64_t> elementCount,
                       const ImportContext& importContext)
    : ScalarNode(name, false, access, type, elementCount, importContext) {}

ScalarNode::ScalarNode(PlainName name, ExternalAccess access, const TypeFacts& type,
                       std::optional<std::uint64_t> elementCount,
                       const ImportContext& importContext)
    : ScalarNode(name.text, true, access, type, elementCount, importContext) {}

ScalarNode::ScalarNode(std::string_view name, ExternalAccess access, std::string_view typeKeyword,
                       std::optional<std::uint64_t> elementCount,
                       const ImportContext& importContext)
    : ScalarNode(name, access, typeOf(typeKeyword), elementCount, importContext) {}

void ScalarNode::addChild(NodeOwner<DataBlockNode> child) {
    child.reset();
    fail(Message::childOfScalar);
}

void ScalarNode::writeElements(utils::json::encoder::Array& targetArray, MemoryPosition& position,
                               ElementPath& path) {
    path.budget().spend();
    if (!access().externalAccessible) {
        path.notes().noteHidden();
        return;
    }
    const RelativeAddress address = scalarAddress(*this, position);
    if (skippedTypes.contains(type())) {
        path.notes().noteWithoutItem(type());
        return;
    }
    const auto& command = commandOf(*importContext_, path, nameView());
    if (!copyItem(targetArray, address, path, command))
        itemText::encode(targetArray, {path.indexedName(nameView()), facts_, textLength_, &address,
                                       access().externalWritable, &command});
}

// Nearly every item can be put together from ready pieces. All of them could be encoded: the
// document would be the same (ItemText.BothWaysWriteTheSameBytes), only later.
bool ScalarNode::copyItem(utils::json::encoder::Array& targetArray, const RelativeAddress& address,
                          ElementPath& path, const model::ImportReference& command) const {
    constexpr std::size_t kRoom = utils::io::OutputStream::kMaxReserve - itemText::kLargestItem;
    itemText::Shared& shared = path.itemTexts();
    const auto tail = shared.tail.of(command, access().externalWritable);
    const std::size_t size = nameView().size() + path.indexSuffix().size() + tail.size();
    if (!plainName_ || tail.empty() || size > kRoom)
        return false;
    char* const target = targetArray.reserveEntry(itemText::kLargestItem + size);
    targetArray.commitEntry(
        itemText::write(target, {nameView(), path.indexSuffix(), facts_, textLength_, tail},
                        address, shared.offset));
    return true;
}

double ScalarNode::documentSize(std::size_t indexSize) const {
    constexpr std::size_t kBrackets = 90; // and the keys
    constexpr std::size_t kNumbers = 9;   // of the address
    constexpr std::size_t kTextSize = 17;
    if (!access().externalAccessible || !facts_->producesItem)
        return 0;
    return static_cast<double>(kBrackets + kNumbers + nameView().size() + indexSize +
                               facts_->name.size() + (facts_->isText() ? kTextSize : 0) +
                               importContext_->defaultCommand().text().size());
}

RelativeAddress scalarAddress(const ScalarNode& node, MemoryPosition& position) {
    return placeScalar(node.typeFacts(), node.textLength(), position);
}

} // namespace corvane::workbench::plugins::s7Driver
