#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <expected>
#include <string>
#include <string_view>

namespace corvane::workbench::cli {

/// The value that `text` stands for in a control: of a choice the stored value or the text shown,
/// of a flag "true" or "false" or the text shown, of a number its decimal digits, of a reference
/// the element's path, of a text the text itself. What the control holds already is always one.
/// Returns the reason where `text` is none of these and where the control takes no value.
[[nodiscard]] std::expected<ui::ControlValue, std::string> readValue(ui::Control& control,
                                                                     std::string_view text);

} // namespace corvane::workbench::cli
