#pragma once

#include "workbench/gui/table/PastedRows.hpp"

#include <QTableView>

#include <vector>

namespace corvane::workbench::gui {

/// What the user copies from the table, pastes into it, or fills down within it. What is changed is
/// one step of history.
class TableClipboard : public QObject {
    Q_OBJECT

public:
    /// `view` shows `model` and owns the object.
    TableClipboard(ProjectSession& session, TableModel& model, QTableView& view);

    /// Copies the selected rows as they are shown, with the headings in the first line.
    void copy();
    /// Enters what was copied, from the current cell on, or where its headings say.
    void paste();
    /// Gives the cells of the current column in all selected rows what the topmost one holds.
    void fillDown();

    [[nodiscard]] bool canCopy() const { return view_->selectionModel()->hasSelection(); }
    [[nodiscard]] bool canPaste() const { return view_->currentIndex().isValid(); }
    [[nodiscard]] bool canFillDown() const;

private:
    /// From the topmost to the lowest.
    [[nodiscard]] std::vector<int> selectedRows() const;
    /// From left to right.
    [[nodiscard]] std::vector<int> shownColumns() const;
    [[nodiscard]] PastedRows::Place place() const;

    ProjectSession* session_;
    TableModel* model_;
    QTableView* view_;
};

} // namespace corvane::workbench::gui
