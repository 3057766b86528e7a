#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <system_error>

namespace corvane::workbench::plugins::s7Driver {

/// What can be wrong with an address text. The texts stand beside the names in AddressMessages.def.
enum class AddressMessage : std::uint8_t {
#define S7_ADDRESS_MESSAGE(name, text) name,
#include "address/AddressMessages.def"
#undef S7_ADDRESS_MESSAGE
};

/// All of them, for those who walk the list.
inline constexpr std::array kAddressMessages = {
#define S7_ADDRESS_MESSAGE(name, text) AddressMessage::name,
#include "address/AddressMessages.def"
#undef S7_ADDRESS_MESSAGE
};

/// The English text in UTF-8, its placeholder filled.
[[nodiscard]] const std::string& addressMessageText(AddressMessage message);

/// The numbers of an address text.
enum class AddressNumber : std::uint8_t { dbNumber, byteOffset, bitOffset };

/// What to say of a number whose conversion ended with `error`, which is not success: one message
/// for a text without digits (invalid_argument), one for a number that is too large
/// (result_out_of_range), and one for anything else that a conversion may come to report.
[[nodiscard]] AddressMessage addressNumberMessage(AddressNumber number, std::errc error);

} // namespace corvane::workbench::plugins::s7Driver
