#pragma once

#include <corvane/workbench/data/DataType.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// The data types of items.
namespace corvane::workbench::plugins::s7Driver {

/// The value types of items. They number the rows of kValueTypes.
enum class ValueType : std::uint8_t {
    signed8,
    signed16,
    signed32,
    signed64,
    unsigned8,
    unsigned16,
    unsigned32,
    unsigned64,
    float32,
    float64,
    text8,
    text16,
    boolean,
    generic,
};

/// What the host knows of each value type: code and width in bits. The "value" attributes of items
/// (elements/Members.hpp) are made of these rows, one for each, in their order.
inline constexpr std::array<data::DataType, 14> kValueTypes{{
    {data::TypeCode::signedInteger, 8},
    {data::TypeCode::signedInteger, 16},
    {data::TypeCode::signedInteger, 32},
    {data::TypeCode::signedInteger, 64},
    {data::TypeCode::unsignedInteger, 8},
    {data::TypeCode::unsignedInteger, 16},
    {data::TypeCode::unsignedInteger, 32},
    {data::TypeCode::unsignedInteger, 64},
    {data::TypeCode::floatingPoint, 32},
    {data::TypeCode::floatingPoint, 64},
    {data::TypeCode::text, 8},
    {data::TypeCode::text, 16},
    {data::TypeCode::boolean, 1},
    {data::TypeCode::generic, 0},
}};
static_assert(static_cast<std::size_t>(ValueType::generic) + 1 == kValueTypes.size());

struct DataType {
    std::string_view name;        // as it is kept, in documents too
    std::string_view displayName; // English
    ValueType valueType;
};

/// All data types, in the order in which the form offers them. The bit strings (Byte to LWord) have
/// the value types of the unsigned integers of their width.
inline constexpr std::array<DataType, 17> kDataTypes{{
    {"Bool", "Boolean", ValueType::boolean},
    {"Byte", "Byte", ValueType::unsigned8},
    {"Word", "Word", ValueType::unsigned16},
    {"DWord", "DWord", ValueType::unsigned32},
    {"LWord", "LWord", ValueType::unsigned64},
    {"SInt", "signed 8-bit integer", ValueType::signed8},
    {"USInt", "unsigned 8-bit integer", ValueType::unsigned8},
    {"Int", "signed 16-bit integer", ValueType::signed16},
    {"UInt", "unsigned 16-bit integer", ValueType::unsigned16},
    {"DInt", "signed 32-bit integer", ValueType::signed32},
    {"UDInt", "unsigned 32-bit integer", ValueType::unsigned32},
    {"LInt", "signed 64-bit integer", ValueType::signed64},
    {"ULInt", "unsigned 64-bit integer", ValueType::unsigned64},
    {"Real", "32-bit floating point", ValueType::float32},
    {"LReal", "64-bit floating point", ValueType::float64},
    {"String", "String", ValueType::text8},
    {"WString", "WString", ValueType::text16},
}};

/// The entry of a data type; null for a text that is none.
[[nodiscard]] constexpr const DataType* findDataType(std::string_view name) {
    for (const auto& type : kDataTypes)
        if (type.name == name)
            return &type;
    return nullptr;
}

/// Whether items of this type have a string size. Asked of every item that is saved, so the other
/// types are not looked at.
[[nodiscard]] constexpr bool isStringType(std::string_view name) {
    constexpr auto kIsText = [](const DataType& type) {
        return type.valueType == ValueType::text8 || type.valueType == ValueType::text16;
    };
    constexpr auto kFirst = std::ranges::find_if(kDataTypes, kIsText);
    static_assert(std::all_of(kFirst, kDataTypes.end(), kIsText), "texts come last");
    return std::any_of(kFirst, kDataTypes.end(),
                       [&](const DataType& type) { return type.name == name; });
}

/// What a text takes in a PLC's memory: a head that holds two lengths, then its characters, all of
/// them whether they are used or not.
struct TextLayout {
    ValueType type;
    std::uint8_t headBytes;
    std::uint8_t characterBytes;
};

inline constexpr std::array<TextLayout, 2> kTextLayouts{{
    {ValueType::text8, 2, 1},
    {ValueType::text16, 4, 2},
}};

/// The bits that a value takes in a PLC's memory: 1 for a boolean, the head and `characters` for a
/// text; 0 where the type does not say. A text beyond any memory counts as one that just is.
[[nodiscard]] constexpr std::uint64_t bitsInMemory(const DataType& type, std::uint64_t characters) {
    constexpr std::uint64_t kMostCharacters = std::uint64_t{1} << 32U;
    constexpr std::uint64_t kByte = 8;
    for (const auto& text : kTextLayouts)
        if (text.type == type.valueType)
            return kByte *
                   (text.headBytes + text.characterBytes * std::min(characters, kMostCharacters));
    return kValueTypes[static_cast<std::size_t>(type.valueType)].bits;
}

} // namespace corvane::workbench::plugins::s7Driver
