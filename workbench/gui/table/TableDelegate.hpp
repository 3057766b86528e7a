#pragma once

#include <QStyledItemDelegate>

namespace corvane::workbench::gui {

class TableModel;

/// Edits a cell of the table with the field that the form would show.
class TableDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    TableDelegate(TableModel& model, QObject* parent);

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

private:
    TableModel* model_;
};

} // namespace corvane::workbench::gui
