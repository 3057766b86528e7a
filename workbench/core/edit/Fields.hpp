#pragma once

#include "workbench/core/OpenForm.hpp"

#include <string_view>

namespace corvane::workbench::core {

/// The control with this label. Throws EditError, with the labels that there are, when the form has
/// none or several.
[[nodiscard]] ui::Control& fieldOf(const OpenForm& form, std::u16string_view label);

} // namespace corvane::workbench::core
