#include "dbimport/ItemText.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/DocumentKeys.hpp"
#include "dbimport/MemoryPosition.hpp"
#include "dbimport/WordScan.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/json/PlainText.hpp>
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

void Tail::renew(Entry& entry, const model::ImportReference& command, bool writable) {
    entry.command = &command;
    entry.text = utils::json::encoder::isPlain(command.text()) ? tailText(command.text(), writable)
                                                               : std::string();
}

void Offset::renew(std::uint64_t hundreds) {
    hundreds_ = hundreds;
    const char* const end = hundreds == 0 ? text_.data() : number(text_.data(), hundreds);
    size_ = static_cast<std::size_t>(end - text_.data());
}

char* write(char* target, const Item& item, const MemoryPosition& place, Offset& offset) {
    const TypeFacts& facts = *item.facts;
    target = kHead.copyTo(target);
    target = scan::copyShort(target, item.name);
    if (!item.indexSuffix.empty())
        target = copyText(target, item.indexSuffix);
    target = kTypePieces[static_cast<std::size_t>(facts.type) - 1].copyTo(target);
    if (facts.isText())
        target = kAddress.copyTo(number(target, item.textLength));
    target = offset.copyTo(target, place.byteOffset);
    if (facts.alignment == Alignment::bit) {
        *target++ = '.';
        *target++ = static_cast<char>('0' + place.bitOffset);
    }
    return copyText(target, item.tail);
}

} // namespace corvane::workbench::plugins::s7Driver::itemText
