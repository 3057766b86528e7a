#include "dbimport/facts/Messages.hpp"

#include <cstddef>
#include <stdexcept>
#include <string>

namespace corvane::workbench::plugins::s7Driver {

std::string_view messageText(Message message) {
    static constexpr std::array<std::string_view, kMessages.size()> kTexts = {
#define S7_IMPORT_MESSAGE(name, text) text,
#include "dbimport/facts/Messages.def"
#undef S7_IMPORT_MESSAGE
    };
    return kTexts[static_cast<std::size_t>(message)];
}

void fail(Message message) { fail(message, std::string_view()); }

void fail(Message message, std::string_view subject) {
    throw ImportError<std::runtime_error>(message,
                                          std::string(messageText(message)).append(subject));
}

void failAt(std::uint64_t place, Message message, std::string_view subject) {
    throw ImportError<std::runtime_error>(message,
                                          std::string(messageText(message)).append(subject), place);
}

void fail(Message message, std::uint64_t subject) { fail(message, std::to_string(subject)); }

} // namespace corvane::workbench::plugins::s7Driver
