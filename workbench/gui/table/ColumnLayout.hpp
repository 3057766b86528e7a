#pragma once

#include "workbench/gui/table/TableModel.hpp"

#include <QHeaderView>

namespace corvane::workbench::gui {

/// Which columns of the table are hidden, and in which order the others stand: for each class of
/// elements as the user left it, from one start of the program to the next. The first column is
/// always the name's.
class ColumnLayout : public QObject {
    Q_OBJECT

public:
    /// `header` shows `model` and owns the object.
    ColumnLayout(TableModel& model, QHeaderView& header);

    /// Of any column but the first.
    void setShown(int column, bool shown);
    /// Shows all columns, in the order of the form.
    void reset();

private:
    void restore();
    void keep() const;
    void apply(const QStringList& columns);
    [[nodiscard]] QString kind() const;
    [[nodiscard]] QString keyOf(int column) const;

    TableModel* model_;
    QHeaderView* header_;
    bool restoring_ = false;
};

} // namespace corvane::workbench::gui
