#pragma once

#include "address/AddressMessages.hpp"

#include <array>
#include <cstdint>
#include <expected>
#include <optional>
#include <stdexcept>
#include <string_view>

/// The syntax of S7 memory addresses:
///
///     [DB<number>.]<area marker>[<size letter>]<byte offset>[.<bit offset>]
///
/// as in M10.3, MW20, DBX4.1 or DB12.DBW8.
namespace corvane::workbench::plugins::s7Driver {

/// The memory areas of a PLC; the values are the area codes of the S7 protocol.
enum class MemoryArea : std::uint8_t {
    Counters = 0x1C,
    Timers = 0x1D,
    IecCounters = 0x1E,
    IecTimers = 0x1F,
    Peripheral = 0x80,
    Inputs = 0x81,
    Outputs = 0x82,
    Flags = 0x83,
    DataBlock = 0x84,
    InstanceDataBlock = 0x85,
    LocalData = 0x86,
};

/// What a size letter says. The width of an item follows from its data type, so the letter is
/// accepted and not kept.
enum class DataSize : std::uint8_t { Byte = 0, Word = 1, DWord = 2, Bit = 3 };

struct MemoryAreaMarker {
    std::string_view text; ///< ASCII, case-sensitive
    MemoryArea area;
};

/// In the order in which they are tried; the first that begins the text is taken. "I" stands before
/// "IecT" and "IecC", which are therefore never found: a text that begins with them is an input
/// whose byte offset is missing. That is how addresses have always been read, and projects rely on
/// it, so the order stays and no longer match is looked for.
inline constexpr std::array kMemoryAreaMarkers = {
    MemoryAreaMarker{"C", MemoryArea::Counters},
    MemoryAreaMarker{"DB", MemoryArea::DataBlock},
    MemoryAreaMarker{"L", MemoryArea::LocalData},
    MemoryAreaMarker{"T", MemoryArea::Timers},
    MemoryAreaMarker{"Q", MemoryArea::Outputs},
    MemoryAreaMarker{"I", MemoryArea::Inputs},
    MemoryAreaMarker{"P", MemoryArea::Peripheral},
    MemoryAreaMarker{"M", MemoryArea::Flags},
    MemoryAreaMarker{"DI", MemoryArea::InstanceDataBlock},
    MemoryAreaMarker{"IecT", MemoryArea::IecTimers},
    MemoryAreaMarker{"IecC", MemoryArea::IecCounters},
};

struct DataSizeLetter {
    char letter;
    DataSize size;
};

/// In the order in which they are tried.
inline constexpr std::array kDataSizeLetters = {
    DataSizeLetter{'B', DataSize::Byte},
    DataSizeLetter{'W', DataSize::Word},
    DataSizeLetter{'D', DataSize::DWord},
    DataSizeLetter{'X', DataSize::Bit},
};

/// What is kept of an address text by who asks which memory it names: the offsets and the size
/// letter are checked and dropped.
struct S7Address {
    /// Engaged only when the text begins with a data block prefix, "DB12." before a marker.
    std::optional<std::uint16_t> dbNumber;
    /// Always engaged in the result of a successful parse.
    std::optional<MemoryArea> memoryArea;

    friend bool operator==(const S7Address&, const S7Address&) = default;
};

/// Reads an address text, or says what is wrong with it: the first fault from the left. Nothing is
/// trimmed. An empty text lacks its memory area.
[[nodiscard]] std::expected<S7Address, AddressMessage> readAddress(std::string_view text) noexcept;

/// An address text with the place that it names: the number behind the marker, of a byte as a rule,
/// and the bit in it.
struct S7Location {
    S7Address address;
    std::uint16_t offset = 0;
    std::uint8_t bit = 0; ///< 0 to 7; 0 where the text names none
};

/// As `readAddress`, offsets included.
[[nodiscard]] std::expected<S7Location, AddressMessage>
readLocation(std::string_view text) noexcept;

/// The marker of a memory area.
[[nodiscard]] constexpr std::string_view markerOf(MemoryArea area) {
    for (const auto& marker : kMemoryAreaMarkers)
        if (marker.area == area)
            return marker.text;
    return {};
}

/// The bits that one number of an address in this area counts: those of a byte, but timers and
/// counters are numbered one by one, and each is a word.
[[nodiscard]] constexpr unsigned bitsPerOffset(MemoryArea area) {
    constexpr unsigned kByte = 8;
    constexpr unsigned kWord = 16;
    switch (area) {
    case MemoryArea::Counters:
    case MemoryArea::Timers:
    case MemoryArea::IecCounters:
    case MemoryArea::IecTimers:
        return kWord;
    default:
        return kByte;
    }
}

/// As `readAddress`; throws std::runtime_error with the message's text where the text is no
/// address. For who has no other way to go on; the elements ask `readAddress`, since a project with
/// a million addresses may hold a million bad ones. Inline, since each function that an exception
/// passes costs more than the parse.
[[nodiscard]] inline S7Address parseAddress(std::string_view text) {
    const auto address = readAddress(text);
    if (!address)
        throw std::runtime_error(addressMessageText(address.error()));
    return *address;
}

} // namespace corvane::workbench::plugins::s7Driver
