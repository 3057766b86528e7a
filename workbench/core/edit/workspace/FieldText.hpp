#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <expected>
#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// A value as text, which `valueFromText` takes for it; that of nothing is empty.
[[nodiscard]] std::u16string textOf(const ui::ControlValue& value);

/// The value that a user means by a text for a field: digits for a number, the value or the text of
/// a choice or a state, the path of an element; or the translated reason why it is none. What the
/// field shows already is its value in any case. Whether the field takes the value is another
/// question, which setting it answers.
[[nodiscard]] std::expected<ui::ControlValue, std::u16string>
valueFromText(ui::Control& control, std::u16string_view text);

} // namespace corvane::workbench::core
