#include "dbimport/tree/ItemText.hpp"

#include "address/DataBlockPrefix.hpp"
#include "dbimport/facts/DocumentKeys.hpp"
#include "dbimport/reader/WordScan.hpp"
#include "dbimport/tree/MemoryPosition.hpp"
#include "elements/DocumentKeys.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/utils/json/PlainText.hpp>
#include <corvane/utils/string/CopyText.hpp>
#include <corvane/workbench/config/DocumentKeys.hpp>
#include <corvane/workbench/model/ElementReference.hpp>

#include <algorithm>
#include <charconv>
#include <optional>

namespace corvane::workbench::plugins::s7Driver::itemText {

namespace {

using utils::string::copyText;

/// What a member's value is.
enum class Value : std::uint8_t { name, dataType, stringSize, address, writable, command };

struct Member {
    utils::json::encoder::Key key;
    Value value = Value::name;
    bool quoted = false;
};

/// The members of an item, in their order.
constexpr std::array kMembers = {
    Member{config::kNameKey, Value::name, true},
    Member{keys::kDataType, Value::dataType, true},
    Member{keys::kStringSize, Value::stringSize, false},
    Member{keys::kAddress, Value::address, true},
    Member{keys::kWritable, Value::writable, false},
    Member{keys::kCommand, Value::command, true},
};

constexpr bool hasMember(const TypeFacts& facts, Value value) {
    return value != Value::stringSize || facts.isText();
}

/// The values that are known before there is an item.
struct Known {
    const TypeFacts* facts;
    bool writable = false;
    std::string_view command;

    [[nodiscard]] constexpr std::string_view text(Value value) const {
        if (value == Value::dataType)
            return typeName(facts->type);
        if (value == Value::writable)
            return writable ? "true" : "false";
        return value == Value::command ? command : std::string_view();
    }
};

/// Gives `add` all that stands between two values of an item, one text behind the other; without
/// the first value, from the item's beginning, without the last, to its end. An address begins
/// behind its marker, which is always the same.
template <class Add>
constexpr void addBetween(std::optional<Value> first, std::optional<Value> last, const Known& known,
                          const Add& add) {
    bool inside = !first;
    std::string_view open = "\":{\"";
    if (inside) {
        add("{\"");
        add(documentKeys::kItem.text());
    }
    for (const Member& member : kMembers) {
        if (!hasMember(*known.facts, member.value))
            continue;
        if (inside) {
            add(open);
            add(member.key.text());
            add(member.quoted ? "\":\"" : "\":");
            if (member.value == Value::address)
                add(kDataBlockMarker);
            if (member.value == last)
                return;
            add(known.text(member.value));
        }
        inside |= member.value == first;
        open = member.quoted ? "\",\"" : ",\"";
    }
    add(kMembers.back().quoted ? "\"}}" : "}}");
}

constexpr Piece pieceBetween(std::optional<Value> first, std::optional<Value> last,
                             const TypeFacts& facts) {
    Piece piece;
    addBetween(first, last, {&facts, false, {}}, [&](std::string_view part) { piece.add(part); });
    return piece;
}

constexpr Piece kHead = pieceBetween({}, Value::name, kTypes.front());

/// From the end of the name to the address; for a text, to its length.
constexpr auto kTypePieces = [] {
    std::array<Piece, kTypes.size()> pieces;
    for (std::size_t row = 0; row != kTypes.size(); ++row)
        pieces[row] = pieceBetween(
            Value::name, kTypes[row].isText() ? Value::stringSize : Value::address, kTypes[row]);
    return pieces;
}();

/// Behind the length of a text.
constexpr Piece kAddress = pieceBetween(Value::stringSize, Value::address,
                                        *std::ranges::find_if(kTypes, &TypeFacts::isText));

char* number(char* target, std::uint64_t value) {
    constexpr std::ptrdiff_t kLongest = 20;
    return std::to_chars(target, target + kLongest, value).ptr;
}

std::string tailText(std::string_view command, bool writable) {
    std::string text;
    addBetween(Value::address, {}, {&kTypes.front(), writable, command},
               [&](std::string_view part) { text.append(part); });
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

char* write(char* target, const Item& item, const RelativeAddress& address, Offset& offset) {
    const TypeFacts& facts = *item.facts;
    target = kHead.copyTo(target);
    target = scan::copyShort(target, item.name);
    if (!item.indexSuffix.empty())
        target = copyText(target, item.indexSuffix);
    target = kTypePieces[static_cast<std::size_t>(facts.type) - 1].copyTo(target);
    if (facts.isText())
        target = kAddress.copyTo(number(target, item.textLength));
    target = offset.copyTo(target, address.place.byteOffset);
    if (address.alignment == Alignment::bit) {
        *target++ = '.';
        *target++ = static_cast<char>('0' + address.place.bitOffset);
    }
    return copyText(target, item.tail);
}

void encode(utils::json::encoder::Array& target, const AnyItem& item) {
    auto entry = target.addObject();
    auto members = entry.addObject(documentKeys::kItem);
    for (const Member& member : kMembers) {
        if (!hasMember(*item.facts, member.value))
            continue;
        switch (member.value) {
        case Value::name:
            members.addStringView(member.key, item.name);
            break;
        case Value::dataType:
            members.addStringView(member.key, typeName(item.facts->type));
            break;
        case Value::stringSize:
            members.addNumber(member.key, item.textLength);
            break;
        case Value::address:
            members.addStringView(member.key, item.address->text());
            break;
        case Value::writable:
            members.add(member.key, item.writable);
            break;
        case Value::command:
            item.command->saveTo(members, member.key);
            break;
        }
    }
}

} // namespace corvane::workbench::plugins::s7Driver::itemText
