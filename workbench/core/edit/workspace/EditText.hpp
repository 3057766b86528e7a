#pragma once

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// An edit was refused; the project is as it was. The text is translated, UTF-8, and says why.
class EditError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A long edit was stopped by its user; the project is as it was.
class EditStopped : public EditError {
public:
    EditStopped();
};

/// A text of the editor in the user's language, with its placeholders "{}" filled in their order.
/// `text` is English, and UTF-8.
[[nodiscard]] std::u16string editText(std::string_view text,
                                      std::initializer_list<std::u16string_view> arguments = {});

/// Throws EditError with such a text.
[[noreturn]] void refuseEdit(std::string_view text,
                             std::initializer_list<std::u16string_view> arguments = {});

} // namespace corvane::workbench::core
