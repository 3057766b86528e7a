#include "dbimport/ScalarNode.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DocumentKeys.hpp"
#include "dbimport/ElementPath.hpp"
#include "dbimport/ImportContext.hpp"
#include "dbimport/ItemText.hpp"
#include "dbimport/MemoryPosition.hpp"
#include "dbimport/Messages.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/string/CopyText.hpp>
#include <corvane/workbench/config/DocumentKeys.hpp>

#include <charconv>

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
    if (!access().externalAccessible)
        return;
    const MemoryPosition place = placeScalar(*facts_, textLength_, position);
    if (!facts_->producesItem)
        return;
    const auto& command = commandOf(*importContext_, path, nameView());
    if (!copyItem(targetArray, place, path, command))
        encodeItem(targetArray, place, path, command);
}

// Nearly every item can be put together from ready pieces.
bool ScalarNode::copyItem(utils::json::encoder::Array& targetArray, const MemoryPosition& place,
                          ElementPath& path, const model::ImportReference& command) const {
    constexpr std::size_t kRoom = utils::io::OutputStream::kMaxReserve - itemText::kLargestItem;
    itemText::Shared& shared = path.itemTexts();
    const auto tail = shared.tail.of(command, access().externalWritable);
    const std::size_t size = nameView().size() + path.indexSuffix().size() + tail.size();
    if (!plainName_ || tail.empty() || size > kRoom)
        return false;
    char* const target = targetArray.reserveEntry(itemText::kLargestItem + size);
    targetArray.commitEntry(itemText::write(
        target, {nameView(), path.indexSuffix(), facts_, textLength_, tail}, place, shared.offset));
    return true;
}

void ScalarNode::encodeItem(utils::json::encoder::Array& targetArray, const MemoryPosition& place,
                            ElementPath& path, const model::ImportReference& command) const {
    auto entry = targetArray.addObject();
    auto item = entry.addObject(documentKeys::kItem);
    item.addStringView(config::kNameKey, path.indexedName(nameView()));
    item.addStringView(keys::kDataType, facts_->name);
    if (facts_->isText())
        item.addNumber(keys::kStringSize, textLength_);
    item.addStringView(keys::kAddress, AddressText(place, facts_->alignment).view());
    item.add(keys::kWritable, access().externalWritable);
    command.saveTo(item, keys::kCommand);
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

AddressText::AddressText(const MemoryPosition& place, Alignment alignment)
    : text_(), end_(utils::string::copyText(text_.data(), kDataBlockMarker)) {
    char* const limit = text_.data() + text_.size();
    end_ = std::to_chars(end_, limit, place.byteOffset).ptr;
    if (alignment != Alignment::bit)
        return;
    *end_++ = '.';
    end_ = std::to_chars(end_, limit, place.bitOffset).ptr;
}

MemoryPosition placeScalar(const TypeFacts& facts, std::uint64_t textLength,
                           MemoryPosition& position) {
    if (facts.size == 0)
        fail(Message::unknownOffset, facts.name);
    if (facts.alignment == Alignment::bit) {
        const MemoryPosition place = position;
        position.advanceBits(facts.size);
        return place;
    }
    position.alignToByte();
    if (facts.alignment == Alignment::word)
        position.alignToWord();
    const MemoryPosition place = position;
    position.advanceBytes(facts.size + facts.characterSize * textLength);
    return place;
}

AddressText scalarAddress(const ScalarNode& node, MemoryPosition& position) {
    const TypeFacts& facts = node.typeFacts();
    return AddressText(placeScalar(facts, node.textLength(), position), facts.alignment);
}

} // namespace corvane::workbench::plugins::s7Driver
