#pragma once

#include <cstdint>

namespace corvane::workbench::data {

/// The kinds of values that attributes carry. The codes are fixed: the runtime reads them.
enum class TypeCode : std::uint8_t {
    /// 1 bit.
    boolean = 0,
    /// Two's complement, 8 to 64 bits; unsigned ones in the same widths.
    signedInteger = 1,
    unsignedInteger = 2,
    /// IEEE 754, 32 or 64 bits.
    floatingPoint = 3,
    /// Text, told apart by the width of its code units: 8 or 16 bits.
    text = 4,
    // The rest has no width that would tell one from another.
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
