#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
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

/// What an import fails with, beside the standard exception that it is.
struct Fault {
    explicit Fault(Message which, std::optional<std::uint64_t> where = std::nullopt)
        : message(which), place(where) {}

    Message message;
    /// Where in the file, in bytes from 0; empty where it is not known (yet).
    std::optional<std::uint64_t> place;

    /// Says where it is, unless that is known already.
    void locate(std::uint64_t offset) {
        if (!place)
            place = offset;
    }
};

/// An exception of a standard kind that is a message of the importer.
template <class Standard>
class ImportError final : public Standard, public Fault {
public:
    ImportError(Message which, const std::string& text,
                std::optional<std::uint64_t> offset = std::nullopt)
        : Standard(text), Fault(which, offset) {}
};

// Each throws an ImportError<std::runtime_error> with the message's text, followed directly by the
// subject.
[[noreturn]] void fail(Message message);
[[noreturn]] void fail(Message message, std::string_view subject);
[[noreturn]] void fail(Message message, std::uint64_t subject);
[[noreturn]] void failAt(std::uint64_t place, Message message, std::string_view subject = {});

} // namespace corvane::workbench::plugins::s7Driver
