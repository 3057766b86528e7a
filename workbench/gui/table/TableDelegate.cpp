#include "workbench/gui/table/TableDelegate.hpp"

#include "workbench/gui/fields/Field.hpp"
#include "workbench/gui/table/TableModel.hpp"

#include <QComboBox>

#include <memory>

namespace corvane::workbench::gui {

namespace {

/// Keeps the form of an edited cell alive as long as the cell's editor, which the view destroys
/// between events: a job may own the model by then.
class KeptForm final : public QObject {
public:
    KeptForm(std::unique_ptr<core::OpenForm> form, BusyRunner& runner, QObject* parent)
        : QObject(parent), form_(std::move(form)), runner_(&runner) {}
    KeptForm(const KeptForm&) = delete;
    KeptForm& operator=(const KeptForm&) = delete;
    ~KeptForm() override { runner_->letGo(std::move(form_)); }

private:
    std::unique_ptr<core::OpenForm> form_;
    BusyRunner* runner_;
};

Field* fieldOf(const QWidget* editor) {
    return editor->findChild<Field*>(QString(), Qt::FindDirectChildrenOnly);
}

} // namespace

TableDelegate::TableDelegate(TableModel& model, QObject* parent)
    : EntryDelegate(parent), model_(&model) {}

QWidget* TableDelegate::makeEditor(QWidget* parent, const QStyleOptionViewItem& option,
                                   const QModelIndex& index) const {
    if (index.column() < kFixedColumns)
        return EntryDelegate::makeEditor(parent, option, index);
    auto form = std::make_unique<core::OpenForm>(model_->elementAt(index.row()));
    auto* const control = model_->controlOf(*form, index);
    if (control == nullptr)
        return nullptr;
    auto* const field = makeField(*control, parent);
    auto* const editor = &field->widget();
    new KeptForm(std::move(form), model_->runner(), editor);
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

// Of a place its end says most.
void TableDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    EntryDelegate::initStyleOption(option, index);
    if (index.column() == static_cast<int>(FixedColumn::location))
        option->textElideMode = Qt::ElideLeft;
}

void TableDelegate::setEditorData(QWidget* editor, const QModelIndex& index) const {
    if (auto* const field = fieldOf(editor))
        field->refresh();
    else
        QStyledItemDelegate::setEditorData(editor, index);
}

void TableDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                 const QModelIndex& index) const {
    auto* const field = fieldOf(editor);
    if (field == nullptr) {
        QStyledItemDelegate::setModelData(editor, model, index);
        return;
    }
    field->commit();
    const auto value = field->entered();
    if (value && *value != field->control().value())
        model_->enter(index, field->control(), *value);
}

void TableDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                         const QModelIndex& index) const {
    EntryDelegate::updateEditorGeometry(editor, option, index);
    // A field may need more room than a narrow column has.
    auto place = editor->geometry();
    place.setWidth(std::max(place.width(), editor->minimumSizeHint().width()));
    editor->setGeometry(place);
}

} // namespace corvane::workbench::gui
