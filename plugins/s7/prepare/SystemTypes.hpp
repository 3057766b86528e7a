#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// The types that come with the PLC: one row each, from which everything else is derived.
namespace corvane::workbench::plugins::s7Driver::prepare {

struct SystemType {
    /// In lower case. With "*" at its end, it stands for all names that begin so.
    std::string_view name;
    /// The type of the import that has the same size; empty where the row has no such type.
    std::string_view word;
    /// Of an area of which nothing is known but its size: bytes, an even number.
    std::uint16_t bytes = 0;
    /// Of a structure, its members as a source declares them.
    std::span<const std::string_view> members;
    /// Whether a parameter of the type is passed by its address.
    bool structured = false;
};

/// The row of a type; `folded` is its name in lower case. Null where there is none.
[[nodiscard]] const SystemType* findSystemType(std::string_view folded);

/// As above; a name in quotes is no prefix's, since whoever writes a program invents such.
[[nodiscard]] const SystemType* findQuotedSystemType(std::string_view folded);

/// Whether it is a type whose size nobody has told, `folded` in lower case.
[[nodiscard]] bool isOfUnknownSize(std::string_view folded);

/// All rows, for those who walk the list.
[[nodiscard]] std::span<const SystemType> systemTypes();

} // namespace corvane::workbench::plugins::s7Driver::prepare
