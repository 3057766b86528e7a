#pragma once

#include "dbimport/facts/Messages.hpp"

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The data types that a .db file may use: one row each, from which everything else is derived.
namespace corvane::workbench::plugins::s7Driver {

enum class S7DataType : std::uint8_t {
    Uninitialized = 0,
    Bool,
    Byte,
    SInt,
    USInt,
    DInt,
    UDInt,
    Int,
    UInt,
    LInt,
    ULInt,
    Real,
    LReal,
    Word,
    DWord,
    LWord,
    String,
    WString,
    S5Time,
    DateAndTime,
    DTL,
};

/// What a variable of a type begins at.
enum class Alignment : std::uint8_t { bit, byte, word };

struct TypeFacts {
    S7DataType type;
    /// As an item's "dataType" has it.
    std::string_view name;
    Alignment alignment;
    /// In bits where the alignment is a bit, in bytes otherwise; of a text, the header in front of
    /// its characters. 0 where the type has no size.
    std::uint8_t size;
    /// Of a text, the bytes of one character; 0 for every other type.
    std::uint8_t characterSize;
    /// Whether a variable becomes an item; if not, it takes its place in memory and no more.
    bool producesItem;

    [[nodiscard]] constexpr bool isText() const { return characterSize != 0; }
};

/// In the order of their codes.
inline constexpr std::array kTypes = {
    TypeFacts{S7DataType::Bool, "Bool", Alignment::bit, 1, 0, true},
    TypeFacts{S7DataType::Byte, "Byte", Alignment::byte, 1, 0, true},
    TypeFacts{S7DataType::SInt, "SInt", Alignment::byte, 1, 0, true},
    TypeFacts{S7DataType::USInt, "USInt", Alignment::byte, 1, 0, true},
    TypeFacts{S7DataType::DInt, "DInt", Alignment::word, 4, 0, true},
    TypeFacts{S7DataType::UDInt, "UDInt", Alignment::word, 4, 0, true},
    TypeFacts{S7DataType::Int, "Int", Alignment::word, 2, 0, true},
    TypeFacts{S7DataType::UInt, "UInt", Alignment::word, 2, 0, true},
    TypeFacts{S7DataType::LInt, "LInt", Alignment::word, 8, 0, true},
    TypeFacts{S7DataType::ULInt, "ULInt", Alignment::word, 8, 0, true},
    TypeFacts{S7DataType::Real, "Real", Alignment::word, 4, 0, true},
    TypeFacts{S7DataType::LReal, "LReal", Alignment::word, 8, 0, true},
    TypeFacts{S7DataType::Word, "Word", Alignment::word, 2, 0, true},
    TypeFacts{S7DataType::DWord, "DWord", Alignment::word, 4, 0, true},
    TypeFacts{S7DataType::LWord, "LWord", Alignment::word, 8, 0, true},
    TypeFacts{S7DataType::String, "String", Alignment::word, 2, 1, true},
    TypeFacts{S7DataType::WString, "WString", Alignment::word, 4, 2, true},
    TypeFacts{S7DataType::S5Time, "S5Time", Alignment::word, 2, 0, false},
    TypeFacts{S7DataType::DateAndTime, "Date_And_Time", Alignment::word, 8, 0, false},
    TypeFacts{S7DataType::DTL, "DTL", Alignment::word, 12, 0, false},
};

struct TypeKeyword {
    std::string_view keyword; ///< lower case
    S7DataType type;
};

/// Several keywords share the plain integer type of their width, since items know no dates, times
/// and characters.
inline constexpr std::array kTypeKeywords = {
    TypeKeyword{"bool", S7DataType::Bool},
    TypeKeyword{"byte", S7DataType::Byte},
    TypeKeyword{"sint", S7DataType::SInt},
    TypeKeyword{"usint", S7DataType::USInt},
    TypeKeyword{"int", S7DataType::Int},
    TypeKeyword{"uint", S7DataType::UInt},
    TypeKeyword{"dint", S7DataType::DInt},
    TypeKeyword{"udint", S7DataType::UDInt},
    TypeKeyword{"lint", S7DataType::LInt},
    TypeKeyword{"ulint", S7DataType::ULInt},
    TypeKeyword{"real", S7DataType::Real},
    TypeKeyword{"lreal", S7DataType::LReal},
    TypeKeyword{"word", S7DataType::Word},
    TypeKeyword{"dword", S7DataType::DWord},
    TypeKeyword{"lword", S7DataType::LWord},
    TypeKeyword{"char", S7DataType::USInt},
    TypeKeyword{"wchar", S7DataType::UInt},
    TypeKeyword{"string", S7DataType::String},
    TypeKeyword{"wstring", S7DataType::WString},
    TypeKeyword{"s5time", S7DataType::S5Time},
    TypeKeyword{"time", S7DataType::UDInt},
    TypeKeyword{"ltime", S7DataType::ULInt},
    TypeKeyword{"date", S7DataType::UInt},
    TypeKeyword{"time_of_day", S7DataType::UDInt},
    TypeKeyword{"ltime_of_day", S7DataType::ULInt},
    TypeKeyword{"date_and_time", S7DataType::DateAndTime},
    TypeKeyword{"ldt", S7DataType::ULInt},
    TypeKeyword{"dtl", S7DataType::DTL},
};

/// The length of a text that declares none, in characters: the longest that a String can have.
inline constexpr std::uint64_t kDefaultTextLength = 254;

/// The row of the type that `keyword` (lower case) stands for; null where it stands for none.
[[nodiscard]] const TypeFacts* findType(std::string_view keyword);

/// The first characters of a keyword in a block of fixed size, with zeros behind them: two blocks
/// are compared without a loop. No type's keyword is longer.
using KeywordBlock = std::array<char, 16>;

/// As `findType`, for a keyword of `size` characters that is in such a block: the same row
/// (TypeTable.ABlockNamesWhatItsWordNames).
[[nodiscard]] const TypeFacts* findType(const KeywordBlock& keyword, std::size_t size);

/// The name in the type's row. Throws std::runtime_error for the uninitialised type and for a code
/// that has no row.
[[nodiscard]] constexpr std::string_view typeName(S7DataType type) {
    const auto code = static_cast<std::size_t>(type);
    if (code == 0)
        fail(Message::uninitializedType);
    if (code > kTypes.size())
        fail(Message::unnamedType);
    return kTypes[code - 1].name;
}

/// A set of types. Every variable is looked up in one, which is the test of a bit.
class TypeSet {
public:
    constexpr void insert(S7DataType type) { types_ |= 1U << static_cast<unsigned>(type); }
    [[nodiscard]] constexpr bool contains(S7DataType type) const {
        return ((types_ >> static_cast<unsigned>(type)) & 1U) != 0;
    }

private:
    std::uint32_t types_ = 0;
};

/// The types whose variables become no item.
[[nodiscard]] constexpr TypeSet typesWithoutItem() {
    TypeSet types;
    for (const TypeFacts& facts : kTypes)
        if (!facts.producesItem)
            types.insert(facts.type);
    return types;
}

} // namespace corvane::workbench::plugins::s7Driver
