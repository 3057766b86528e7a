#pragma once

#include <cstdint>

namespace corvane::workbench::data {

/// The kinds of values that attributes carry. The codes are fixed: the runtime reads them.
enum class TypeCode : std::uint8_t {
    boolean = 0,
    signedInteger = 1,
    unsignedInteger = 2,
    floatingPoint = 3,
    /// Text, told apart by the width of its code units.
    text = 4,
    timePoint = 5,
    errorCode = 9,
    /// Any value: for data whose type is not known.
    generic = 11,
};

/// A value type: its kind, and its width in bits where the kind comes in several (0 elsewhere).
struct DataType {
    TypeCode code;
    std::uint8_t bits;

    friend constexpr bool operator==(const DataType&, const DataType&) = default;
};

} // namespace corvane::workbench::data
