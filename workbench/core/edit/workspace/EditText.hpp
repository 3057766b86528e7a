#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <initializer_list>
#include <span>
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

/// A text that counts elements: `one` for a single one, with its name in the place of "{}", else
/// `many` with their number there.
[[nodiscard]] std::u16string countedEditText(std::string_view one, std::string_view many,
                                             std::span<model::Element* const> elements);

/// Throws EditError with such a text.
[[noreturn]] void refuseEdit(std::string_view text,
                             std::initializer_list<std::u16string_view> arguments = {});

} // namespace corvane::workbench::core
