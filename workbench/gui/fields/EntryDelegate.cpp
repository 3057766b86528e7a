#include "workbench/gui/fields/EntryDelegate.hpp"

namespace corvane::workbench::gui {

void EntryDelegate::commit() {
    if (editor_ == nullptr)
        return;
    auto* const editor = editor_.data();
    editor_.clear();
    emit commitData(editor);
    emit closeEditor(editor);
}

QWidget* EntryDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    editor_ = makeEditor(parent, option, index);
    return editor_;
}

QWidget* EntryDelegate::makeEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
    return QStyledItemDelegate::createEditor(parent, option, index);
}

} // namespace corvane::workbench::gui
