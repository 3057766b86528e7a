#pragma once

#include "workbench/gui/session/BusyRunner.hpp"

#include <corvane/workbench/model/Element.hpp>

#include <QString>

#include <vector>

namespace corvane::workbench::gui {

/// Rows of the table as spreadsheets take them: a line for each, a tab between its cells. What
/// would end a cell or a line stands in it as a blank. `columns` are those of the table's model.
/// Tells `runner` how far it is, and ends early, with no text, where that says so. The calling
/// thread owns the model.
[[nodiscard]] QString rowsAsText(const std::vector<model::Element*>& rows,
                                 const std::vector<int>& columns, BusyRunner& runner);

/// One line of such a text.
[[nodiscard]] QString lineOfCells(const QStringList& cells);

/// The lines of a text from a spreadsheet, with their cells. A cell in quotes may hold tabs and
/// ends of lines, and each quote twice; quotes that do not enclose a cell are text.
[[nodiscard]] std::vector<QStringList> cellsOfText(const QString& text);

} // namespace corvane::workbench::gui
