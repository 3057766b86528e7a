#pragma once

#include <cstdint>

namespace corvane::workbench::io {

/// The side of a device's data traffic that a member belongs to.
enum class Direction : std::uint8_t {
    /// From the device: reading.
    input = 1,
    /// To the device: writing.
    output = 2,
};

} // namespace corvane::workbench::io
