#pragma once

#include "workbench/core/project/OpenForm.hpp"

#include <QString>

#include <vector>

namespace corvane::workbench::gui {

/// A control of a form as a cell of the table.
struct Cell {
    QString text;
    QString error; // empty for none
    bool editable = false;
};

/// The controls of a form that have a column: those that show a property, in form order. They are
/// the same for all elements of a class.
[[nodiscard]] std::vector<ui::Control*> cellControls(const core::OpenForm& form);

/// What a control shows now; an empty cell for one that is not visible.
[[nodiscard]] Cell readCell(ui::Control& control);

} // namespace corvane::workbench::gui
