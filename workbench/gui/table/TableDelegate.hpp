#pragma once

#include "workbench/gui/fields/EntryDelegate.hpp"

namespace corvane::workbench::gui {

class TableModel;

/// Edits a cell of the table with the field that the form would show.
class TableDelegate : public EntryDelegate {
    Q_OBJECT

public:
    TableDelegate(TableModel& model, QObject* parent);

    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    QWidget* makeEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;

private:
    TableModel* model_;
};

} // namespace corvane::workbench::gui
