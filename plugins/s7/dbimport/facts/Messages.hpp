#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// The importer's messages. Nothing of a faulty file is repaired: the first fault ends the import
/// with one of these.
namespace corvane::workbench::plugins::s7Driver {

enum class Message : std::uint8_t {
#define S7_IMPORT_MESSAGE(name, text) name,
#include "dbimport/facts/Messages.def"
#undef S7_IMPORT_MESSAGE
};

/// All of them, for those who walk the list.
inline constexpr std::array kMessages = {
#define S7_IMPORT_MESSAGE(name, text) Message::name,
#include "dbimport/facts/Messages.def"
#undef S7_IMPORT_MESSAGE
};

/// The English text of a message.
[[nodiscard]] std::string_view messageText(Message message);

// Each throws std::runtime_error with the message's text, followed directly by the subject.
[[noreturn]] void fail(Message message);
[[noreturn]] void fail(Message message, std::string_view subject);
[[noreturn]] void fail(Message message, std::uint64_t subject);

} // namespace corvane::workbench::plugins::s7Driver
