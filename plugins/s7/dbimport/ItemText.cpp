#include "dbimport/ItemText.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DocumentKeys.hpp"
#include "dbimport/MemoryPosition.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/string/CopyText.hpp>
#include <corvane/workbench/config/DocumentKeys.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <charconv>

namespace corvane::workbench::plugins::s7Driver::itemText {

namespace {

using utils::string::copyText;

constexpr Piece pieceOf(std::initializer_list<std::string_view> parts) {
    Piece piece;
    for (const auto part : parts)
        piece.add(part);
    return piece;
}

constexpr Piece kHead =
    pieceOf({"{\"", documentKeys::kItem.text(), "\":{\"", config::kNameKey.text(), "\":\""});

/// From the end of the name to the address; for a text, to its length.
constexpr Piece typePiece(const TypeFacts& facts) {
    Piece piece = pieceOf({"\",\"", keys::kDataType.text(), "\":\"", facts.name, "\",\""});
    if (facts.isText())
        piece.add(keys::kStringSize.text());
    else
        piece.add(keys::kAddress.text());
    piece.add("\":");
    if (!facts.isText()) {
        piece.add("\"");
        piece.add(kDataBlockMarker);
    }
    return piece;
}

constexpr auto kTypePieces = [] {
    std::array<Piece, kTypes.size()> pieces;
    for (std::size_t row = 0; row != kTypes.size(); ++row)
        pieces[row] = typePiece(kTypes[row]);
    return pieces;
}();

/// Behind the length of a text.
constexpr Piece kAddress = pieceOf({",\"", keys::kAddress.text(), "\":\"", kDataBlockMarker});

char* number(char* target, std::uint64_t value) {
    constexpr std::ptrdiff_t kLongest = 20;
    return std::to_chars(target, target + kLongest, value).ptr;
}

std::string tailText(std::string_view command, bool writable) {
    std::string text("\",\"");
    text.append(keys::kWritable.text()).append(writable ? "\":true,\"" : "\":false,\"");
    text.append(keys::kCommand.text()).append("\":\"").append(command).append("\"}}");
    return text;
}

} // namespace

std::string_view Tail::of(const model::ImportReference& command, bool writable) {
    Entry& entry = entries_[writable ? 1 : 0];
    if (entry.command != &command) {
        entry.command = &command;
        entry.text = utils::json::encoder::isPlain(command.text())
                         ? tailText(command.text(), writable)
                         : std::string();
    }
    return entry.text;
}

char* write(char* target, const Item& item, const MemoryPosition& place) {
    const TypeFacts& facts = *item.facts;
    target = kHead.copyTo(target);
    target = copyText(target, item.name);
    target = copyText(target, item.indexSuffix);
    target = kTypePieces[static_cast<std::size_t>(facts.type) - 1].copyTo(target);
    if (facts.isText())
        target = kAddress.copyTo(number(target, item.elementCount.value_or(kDefaultTextLength)));
    target = number(target, place.byteOffset);
    if (facts.alignment == Alignment::bit) {
        *target++ = '.';
        *target++ = static_cast<char>('0' + place.bitOffset);
    }
    return copyText(target, item.tail);
}

} // namespace corvane::workbench::plugins::s7Driver::itemText
