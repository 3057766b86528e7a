#include "address/AddressMessages.hpp"

#include <cstddef>
#include <limits>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

namespace {

using Texts = std::array<std::string, kAddressMessages.size()>;

std::string filled(std::string_view format) {
    constexpr std::string_view kPlaceholder = "{}";
    std::string text(format);
    if (const auto place = text.find(kPlaceholder); place != std::string::npos)
        text.replace(place, kPlaceholder.size(),
                     std::to_string(std::numeric_limits<std::uint16_t>::max()));
    return text;
}

const Texts& texts() {
    static const Texts all = {
#define S7_ADDRESS_MESSAGE(name, text) filled(text),
#include "address/AddressMessages.def"
#undef S7_ADDRESS_MESSAGE
    };
    return all;
}

} // namespace

const std::string& addressMessageText(AddressMessage message) {
    return texts()[static_cast<std::size_t>(message)];
}

AddressMessage addressNumberMessage(AddressNumber number, std::errc error) {
    struct Row {
        AddressMessage missing;
        AddressMessage outOfRange;
        AddressMessage malformed;
    };
    using enum AddressMessage;
    static constexpr std::array<Row, 3> kRows = {
        Row{missingDbNumber, dbNumberOutOfRange, malformedDbNumber},
        Row{missingByteOffset, byteOffsetOutOfRange, malformedByteOffset},
        Row{missingBitOffset, bitOffsetOutOfRange, malformedBitOffset},
    };
    const Row& row = kRows[static_cast<std::size_t>(number)];
    if (error == std::errc::invalid_argument)
        return row.missing;
    return error == std::errc::result_out_of_range ? row.outOfRange : row.malformed;
}

} // namespace corvane::workbench::plugins::s7Driver
