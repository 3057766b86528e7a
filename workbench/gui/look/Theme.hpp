#pragma once

#include <QPalette>

#include <cstdint>

namespace corvane::workbench::gui {

/// How the program looks.
enum class Theme : std::uint8_t {
    system, // as light or dark as the desktop was when the program started
    light,
    dark,
};

/// Gives the whole program a look, at once.
void applyTheme(Theme theme);

[[nodiscard]] bool isDark(const QPalette& palette);

/// The role of the colour of what is wrong, readable on the palette's backgrounds.
inline constexpr QPalette::ColorRole kErrorRole = QPalette::BrightText;

} // namespace corvane::workbench::gui
