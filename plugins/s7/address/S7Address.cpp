#include "address/S7Address.hpp"

#include "address/DataBlockPrefix.hpp"

#include <corvane/utils/string/Ascii.hpp>

#include <charconv>
#include <concepts>

namespace corvane::workbench::plugins::s7Driver {

namespace {

using Fault = std::optional<AddressMessage>;

/// The text that is still to be read, and the readers that take a piece off its front. A reader
/// that finds a fault says so and leaves the address unfinished.
class Remainder {
public:
    explicit Remainder(std::string_view text) : text_(text) {}

    [[nodiscard]] bool empty() const { return text_.empty(); }

    bool take(char expected) {
        if (text_.empty() || text_.front() != expected)
            return false;
        text_.remove_prefix(1);
        return true;
    }

    template <std::unsigned_integral Number>
    Fault number(AddressNumber which, Number& value) {
        const char* const end = text_.data() + text_.size();
        const auto result = std::from_chars(text_.data(), end, value);
        if (result.ec != std::errc{})
            return addressNumberMessage(which, result.ec);
        text_ = std::string_view(result.ptr, end);
        return {};
    }

    //    DB12.DBW8
    //    ^
    // Only a dot that is followed by something other than a digit ends a prefix, so DB1.5 is byte
    // 1, bit 5 of area "DB" and not data block 1. This is intended.
    Fault dataBlockPrefix(S7Address& address) {
        const std::size_t dot = dataBlockNumberEnd(text_);
        if (dot + 1 >= text_.size() || utils::string::ascii::isDigit(text_[dot + 1]))
            return {};
        text_.remove_prefix(kDataBlockMarker.size());
        std::uint16_t number = 0;
        if (const Fault fault = this->number(AddressNumber::dbNumber, number))
            return fault;
        if (take('.'))
            address.dbNumber = number;
        return {};
    }

    //    DB12.DBW8
    //         ^
    Fault memoryArea(S7Address& address) {
        for (const MemoryAreaMarker& marker : kMemoryAreaMarkers) {
            if (!text_.starts_with(marker.text))
                continue;
            address.memoryArea = marker.area;
            text_.remove_prefix(marker.text.size());
            if (address.dbNumber && marker.area != MemoryArea::DataBlock)
                return AddressMessage::inconsistentMemoryArea;
            return {};
        }
        return AddressMessage::missingMemoryArea;
    }

    //    DB12.DBW8
    //           ^
    void sizeLetter() {
        for (const DataSizeLetter& size : kDataSizeLetters)
            if (take(size.letter))
                return;
    }

    //    M10.3
    //       ^
    Fault bitOffset(std::uint8_t& bit) {
        constexpr std::uint8_t kHighestBit = 7;
        if (!take('.'))
            return AddressMessage::unexpectedAfterByteOffset;
        if (const Fault fault = number(AddressNumber::bitOffset, bit))
            return fault;
        if (bit > kHighestBit)
            return AddressMessage::bitOffsetOutOfRange;
        return {};
    }

private:
    std::string_view text_;
};

} // namespace

std::expected<S7Location, AddressMessage> readLocation(std::string_view text) noexcept {
    Remainder rest(text);
    S7Location location;
    if (const Fault fault = rest.dataBlockPrefix(location.address))
        return std::unexpected(*fault);
    if (const Fault fault = rest.memoryArea(location.address))
        return std::unexpected(*fault);
    rest.sizeLetter();
    if (const Fault fault = rest.number(AddressNumber::byteOffset, location.offset))
        return std::unexpected(*fault);
    if (rest.empty())
        return location;
    if (const Fault fault = rest.bitOffset(location.bit))
        return std::unexpected(*fault);
    if (!rest.empty())
        return std::unexpected(AddressMessage::extraCharacters);
    return location;
}

std::expected<S7Address, AddressMessage> readAddress(std::string_view text) noexcept {
    const auto location = readLocation(text);
    if (!location)
        return std::unexpected(location.error());
    return location->address;
}

} // namespace corvane::workbench::plugins::s7Driver
