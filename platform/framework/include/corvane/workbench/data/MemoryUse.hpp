#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

/// What an element says of the memory of its device, so that the host can show what lies where and
/// find what lies twice, without a word of any device's own.
///
/// Three kinds of elements have to do with memory:
///
///     MemoryDevice     /Press              a controller: all below it share its memories
///     MemoryBlock        /Press/Data       a memory of its own, known to the device as "DB5"
///     MemoryExtent         /Press/Data/on  bit 3 of byte 12 of it
///     MemoryExtent       /Press/lamp       bit 0 of byte 4 of the device's area "Q"
///
/// Elements between them, such as groups, need not say anything.
namespace corvane::workbench::data {

/// The element stands for a device. Two memories below it that are known by the same name are one;
/// below two devices they are not.
struct MemoryDevice {
    friend bool operator==(const MemoryDevice&, const MemoryDevice&) = default;
};

/// The element stands for a memory in which bytes are counted from 0.
struct MemoryBlock {
    /// By what the device knows it, as a user would call it: "DB5". Two blocks of one device that
    /// have the same designation are taken for the same memory. Empty where that is not known: such
    /// a block is no other's.
    std::string designation;

    friend bool operator==(const MemoryBlock&, const MemoryBlock&) = default;
};

/// The element stands for a value that lies in a memory.
///
/// Bits are counted from the memory's beginning: bit 0 of byte `n`, its least significant one, is
/// `8 * n`. Numbers are the element's own affair: a host reckons with any.
struct MemoryExtent {
    /// The memory: empty for the nearest MemoryBlock above; else the name of an area that the
    /// nearest MemoryDevice above has once, such as "M" or "Q". An element above which there is no
    /// such block or device lies nowhere.
    std::string_view area;

    std::uint64_t offset = 0; ///< of its first bit, in bits
    std::uint64_t size = 0;   ///< in bits; what is a single bit takes 1, and nothing takes 0

    friend bool operator==(const MemoryExtent&, const MemoryExtent&) = default;
};

/// What an element takes of a memory; the first alternative for one that has nothing to do with
/// any, or whose place is not known, as that of an item with a wrong address. Texts that are views
/// belong to the element and are valid until it changes.
using MemoryUse = std::variant<std::monostate, MemoryDevice, MemoryBlock, MemoryExtent>;

} // namespace corvane::workbench::data
