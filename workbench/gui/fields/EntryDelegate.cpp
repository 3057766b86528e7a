#include "workbench/gui/fields/EntryDelegate.hpp"

#include <algorithm>

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

void EntryDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    const auto item = option.rect;
    auto place = editor->geometry();
    place.setHeight(std::max(item.height(), editor->minimumSizeHint().height()));
    place.moveTop(item.center().y() - place.height() / 2);
    place.moveTop(std::max(place.top(), 0));
    editor->setGeometry(place);
}

QWidget* EntryDelegate::makeEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
    return QStyledItemDelegate::createEditor(parent, option, index);
}

} // namespace corvane::workbench::gui
