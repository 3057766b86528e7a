#pragma once

#include "dbimport/facts/TypeTable.hpp"

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace corvane::workbench::model {
class ImportReference;
}

namespace corvane::utils::json::encoder {
class Array;
}

namespace corvane::workbench::plugins::s7Driver {

struct RelativeAddress;

/// The document of an item, in two ways: encoded member by member, whatever its values are, or put
/// together from pieces that are the same for many items, ready to be copied. A large import
/// consists of little else than items, and what they differ in is a small part of their text. Both
/// ways follow one table of members.
///
/// In pieces, an item is head, name, type, address and tail:
///
///     {"@Skill.S7.Item":{"name":"  speed[1]  ","dataType":"Int","address":"DB  12
///     ","writable":true,"command":"/PLC/Default Command"}}
namespace itemText {

/// A piece of text in a block of fixed size, which is copied whole: that needs no loop.
struct Piece {
    std::array<char, 64> text{};
    std::uint8_t size = 0;

    constexpr void add(std::string_view part) {
        for (const char c : part)
            text[size++] = c;
    }
    [[nodiscard]] char* copyTo(char* target) const {
        std::memcpy(target, text.data(), text.size());
        return target + size;
    }
};

/// The text behind an item's address: whether it can be written, and its command.
class Tail {
public:
    /// The tail for this command, which is the same object as long as it is the same command; empty
    /// where the command's text cannot be copied as it is.
    [[nodiscard]] std::string_view of(const model::ImportReference& command, bool writable) {
        Entry& entry = entries_[writable ? 1 : 0];
        if (entry.command != &command)
            renew(entry, command, writable);
        return entry.text;
    }

private:
    struct Entry {
        const model::ImportReference* command = nullptr;
        std::string text;
    };
    static void renew(Entry& entry, const model::ImportReference& command, bool writable);

    std::array<Entry, 2> entries_; // read-only, writable
};

/// The decimal text of byte offsets, of which most share all but the last two digits with the one
/// before. The same text as that of the number alone (ItemText.BothWaysWriteTheSameBytes).
class Offset {
public:
    /// The bytes that `copyTo` may write.
    static constexpr std::size_t kLargest = 24;

    /// Returns the end of the text.
    [[nodiscard]] char* copyTo(char* target, std::uint64_t offset) {
        if (offset < 10) {
            *target = static_cast<char>('0' + offset);
            return target + 1;
        }
        if (offset / 100 != hundreds_)
            renew(offset / 100);
        std::memcpy(target, text_.data(), text_.size());
        const std::uint64_t rest = offset % 100;
        target += size_;
        target[0] = static_cast<char>('0' + rest / 10);
        target[1] = static_cast<char>('0' + rest % 10);
        return target + 2;
    }

private:
    void renew(std::uint64_t hundreds);

    std::uint64_t hundreds_ = 0;
    std::array<char, kLargest - 2> text_{}; // the hundreds; nothing where there are none
    std::size_t size_ = 0;
};

/// What the items of one walk share.
struct Shared {
    Tail tail;
    Offset offset;
};

/// The bytes that an item takes at most, beside its name, its index and its tail.
inline constexpr std::size_t kLargestItem = 4 * sizeof(Piece);

/// What differs from item to item.
struct Item {
    std::string_view name; // as of a PlainName
    std::string_view indexSuffix;
    const TypeFacts* facts;
    std::uint64_t textLength; // of a text only
    std::string_view tail;
};

/// Writes the item that lies at `address`; returns the end of the text. There is room for it.
[[nodiscard]] char* write(char* target, const Item& item, const RelativeAddress& address,
                          Offset& offset);

/// An item with all its values, which may be any.
struct AnyItem {
    std::string_view name; // with its index
    const TypeFacts* facts;
    std::uint64_t textLength; // of a text only
    const RelativeAddress* address;
    bool writable;
    const model::ImportReference* command;
};

/// Adds the item to an array.
void encode(utils::json::encoder::Array& target, const AnyItem& item);

} // namespace itemText

} // namespace corvane::workbench::plugins::s7Driver
