#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <string_view>

namespace corvane::workbench::cli {

/// The value that `text` stands for in a control: of a choice the stored value or the text shown,
/// of a flag "true" or "false" or the text shown, of a number its decimal digits, of a reference
/// the element's path, of a text the text itself. Throws std::runtime_error, naming the label, for
/// a text that is none of these and for a control that takes no value.
[[nodiscard]] ui::ControlValue readValue(ui::Control& control, std::string_view text);

} // namespace corvane::workbench::cli
