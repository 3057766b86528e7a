#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// What the elements' validators have to say. The texts stand beside the names in
/// ValidationMessages.def.
namespace corvane::workbench::plugins::s7Driver {

enum class ValidationMessage : std::uint8_t {
#define S7_VALIDATION_MESSAGE(name, text) name,
#include "elements/ValidationMessages.def"
#undef S7_VALIDATION_MESSAGE
};

/// All of them, for those who walk the list.
inline constexpr std::array kValidationMessages = {
#define S7_VALIDATION_MESSAGE(name, text) ValidationMessage::name,
#include "elements/ValidationMessages.def"
#undef S7_VALIDATION_MESSAGE
};

/// The English text in UTF-8, to be translated in the context of the element that refuses.
[[nodiscard]] constexpr std::string_view validationMessageText(ValidationMessage message) {
    constexpr std::array<std::string_view, kValidationMessages.size()> kTexts = {
#define S7_VALIDATION_MESSAGE(name, text) text,
#include "elements/ValidationMessages.def"
#undef S7_VALIDATION_MESSAGE
    };
    return kTexts[static_cast<std::size_t>(message)];
}

} // namespace corvane::workbench::plugins::s7Driver
