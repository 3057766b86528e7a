#pragma once

#include "dbimport/facts/VariableDeclaration.hpp"

#include <array>
#include <concepts>
#include <cstddef>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// What an attribute block `{ NAME := VALUE; ... }` says about the attributes that a caller looks
/// for. Other attributes are read for their syntax and dropped.
class AttributeTable {
public:
    static constexpr std::size_t kCapacity = 2;

    /// The names to look for: lower case, at most `kCapacity` of them, and to outlive the table.
    template <std::convertible_to<std::string_view>... Names>
        requires(sizeof...(Names) <= kCapacity)
    explicit AttributeTable(const Names&... names) : entries_{Entry{names}...} {}

    /// What is said of an attribute so far.
    struct Entry {
        std::string_view name;
        bool isFalse = false;

        /// Takes the attribute's value; of several the last one counts.
        void setValue(std::string_view value);
    };

    /// The entry of the attribute that is called `name`, in any case; null for one that nobody
    /// looks for.
    [[nodiscard]] Entry* find(std::string_view name);

    /// Whether the attribute `name`, one of those to look for, has the value FALSE, in any case,
    /// plain or in single quotes. Any other value, and none, is not false.
    [[nodiscard]] bool isFalse(std::string_view name) const;

private:
    std::array<Entry, kCapacity> entries_;
};

/// A table for the attributes of a variable, and what it says of the access to that variable.
[[nodiscard]] AttributeTable variableAttributes();
[[nodiscard]] ExternalAccess accessOf(const AttributeTable& variableAttributes);

/// Whether `separator`, which stands behind an attribute's value, ends the attribute block ("}") or
/// leads to the next attribute (";"). Throws std::runtime_error for any other.
[[nodiscard]] bool endsAttributeBlock(char separator);

} // namespace corvane::workbench::plugins::s7Driver
