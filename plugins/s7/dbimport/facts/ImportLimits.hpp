#pragma once

#include <cstddef>
#include <cstdint>

namespace corvane::workbench::plugins::s7Driver {

/// How far an import goes before it gives up with a message, so that no file can exhaust the
/// machine. All are far beyond what a PLC can hold.
struct ImportLimits {
    /// Structs inside structs. Also bounds the recursion that writes and destroys a tree; with the
    /// data block, the PLC and an item it stays below what the host's own tree can hold.
    unsigned structLevels = 256;

    /// Nodes visited during the layout of a whole file, a node inside an array once per element.
    std::uint64_t elements = 16'777'216;

    /// Bytes of the import document.
    std::size_t documentBytes = std::size_t{2} * 1024 * 1024 * 1024;
};

/// The most dimensions of an array. A dimension of one element costs time at every step of the
/// index and yields nothing, so that their number needs a bound of its own.
inline constexpr std::size_t kMaxDimensions = 64;

} // namespace corvane::workbench::plugins::s7Driver
