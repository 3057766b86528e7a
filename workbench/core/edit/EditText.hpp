#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// A text of the editor in the user's language, with its placeholders "{}" filled.
[[nodiscard]] std::u16string editText(std::string_view text,
                                      std::initializer_list<std::u16string_view> arguments = {});

/// Throws EditError with such a text.
[[noreturn]] void refuseEdit(std::string_view text,
                             std::initializer_list<std::u16string_view> arguments = {});

} // namespace corvane::workbench::core
