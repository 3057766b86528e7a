#pragma once

#include <QPointer>
#include <QStyledItemDelegate>

namespace corvane::workbench::gui {

/// Edits items in place, and enters what is being typed when it is asked to.
class EntryDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Ends an edit that is under way as if the user had pressed Enter.
    void commit();

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const final;
    /// An editor that is higher than its item stands out above and below it alike.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;

protected:
    /// The editor for an item; null where there is none.
    virtual QWidget* makeEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                const QModelIndex& index) const;

private:
    mutable QPointer<QWidget> editor_; // of the last edit
};

} // namespace corvane::workbench::gui
