#pragma once

#include "workbench/core/project/OpenForm.hpp"

#include <corvane/workbench/ui/Control.hpp>

#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// A value for the control with this key.
struct FieldValue {
    std::string key;
    ui::ControlValue value;
};

/// The control with this key. Throws EditError when the form has none.
[[nodiscard]] ui::Control& fieldWithKey(const OpenForm& form, std::string_view key);

/// The control that a user calls by its label or, where several have the label, by its key. Throws
/// EditError, with what there is to choose from, when that is none or several.
[[nodiscard]] ui::Control& fieldOf(const OpenForm& form, std::u16string_view label);

} // namespace corvane::workbench::core
