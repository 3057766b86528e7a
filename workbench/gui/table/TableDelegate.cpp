#include "workbench/gui/table/TableDelegate.hpp"

#include "workbench/gui/fields/Field.hpp"
#include "workbench/gui/table/TableModel.hpp"

#include <QComboBox>

#include <memory>

namespace corvane::workbench::gui {

namespace {

/// Keeps the form of an edited cell alive as long as the cell's editor.
class KeptForm final : public QObject {
public:
    KeptForm(std::unique_ptr<core::OpenForm> form, QObject* parent)
        : QObject(parent), form_(std::move(form)) {}

private:
    std::unique_ptr<core::OpenForm> form_;
};

Field* fieldOf(const QWidget* editor) {
    return editor->findChild<Field*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

TableDelegate::TableDelegate(TableModel& model, QObject* parent)
    : QStyledItemDelegate(parent), model_(&model) {}

QWidget* TableDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                     const QModelIndex& index) const {
    if (index.column() < kFixedColumns)
        return QStyledItemDelegate::createEditor(parent, option, index);
    auto form = std::make_unique<core::OpenForm>(model_->elementAt(index.row()));
    const auto controls = cellControls(*form);
    const auto column = static_cast<std::size_t>(index.column() - kFixedColumns);
    if (column >= controls.size())
        return nullptr;
    auto* const field = makeField(*controls[column], parent);
    auto* const editor = &field->widget();
    new KeptForm(std::move(form), editor);
    // A choice is an answer: nobody has to press Enter after it.
    if (qobject_cast<QComboBox*>(editor) != nullptr) {
        auto* const self = const_cast<TableDelegate*>(this);
        connect(field, &Field::edited, self, [self, editor] {
            emit self->commitData(editor);
            emit self->closeEditor(editor);
        });
    }
    return editor;
}

void TableDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* const field = fieldOf(editor))
        field->refresh();
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void TableDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& index) const {
    const auto* const field = fieldOf(editor);
    if (field == nullptr) {
        QStyledItemDelegate::setModelData(editor, model, index);
        return;
    }
    const auto value = field->entered();
    if (value && *value != field->control().value())
        model_->enter(index, *value);
}

void TableDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    QStyledItemDelegate::updateEditorGeometry(editor, option, index);
    // A field may need more room than a narrow column has.
    auto place = editor->geometry();
    place.setWidth(std::max(place.width(), editor->minimumSizeHint().width()));
    editor->setGeometry(place);
}

} // namespace corvane::workbench::gui
