#pragma once

#include <corvane/utils/json/Encoder.hpp>

/// The members of the elements' documents, as they are written and read.
namespace corvane::workbench::plugins::s7Driver::keys {

using utils::json::encoder::Key;

// PLC
inline constexpr Key kAddress{"address"}; // of an item, too
inline constexpr Key kRack{"rack"};
inline constexpr Key kSlot{"slot"};

// Data block
inline constexpr Key kDbNumber{"DBNumber"};

// Item
inline constexpr Key kDataType{"dataType"};
inline constexpr Key kStringSize{"stringSize"};
inline constexpr Key kWritable{"writable"};
inline constexpr Key kCommand{"command"};

// Read where older documents have them, never written.
inline constexpr Key kHostName{"hostName"};           // the address of a PLC
inline constexpr Key kDbNumberWithBlank{"DB number"}; // the number of a data block
inline constexpr Key kBufferLength{"bufferLength"}; // the size of a string with its two head bytes

} // namespace corvane::workbench::plugins::s7Driver::keys
