#include "workbench/gui/preview/NewElementForm.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QFormLayout>
#include <QLabel>
#include <QVBoxLayout>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::NewElementForm";

} // namespace

NewElementForm::NewElementForm(std::shared_ptr<ImportDraft> draft, ProjectSession& session,
                               QWidget* parent)
    : QWidget(parent),
      draft_(std::move(draft)),
      session_(&session),
      title_(plainLabel(this)),
      hint_(plainLabel(this)) {
    setObjectName(QStringLiteral("newElementForm"));
    setAccessibleName(translated(kContext, "Properties of the new element"));
    auto font = title_->font();
    font.setBold(true);
    title_->setFont(font);
    hint_->setWordWrap(true);
    hint_->setForegroundRole(QPalette::PlaceholderText);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 0, 0, 0);
    layout->addWidget(title_);
    layout->addWidget(hint_);
    layout->addStretch(1);
    showElement(std::nullopt);
}

NewElementForm::~NewElementForm() { close(); }

// The fields refer to the controls: they go first.
void NewElementForm::close() {
    for (const FormRow* const row : rows_)
        row->field().disconnect(this);
    rows_.clear();
    delete std::exchange(page_, nullptr);
    form_.reset();
    position_.reset();
}

void NewElementForm::showElement(std::optional<std::size_t> position) {
    if (position && position == position_) {
        refresh(); // the keyboard stays where it is
        return;
    }
    close();
    auto* const element = position ? draft_->newElement(*position) : nullptr;
    title_->setText(element == nullptr ? QString() : toQt(element->name()));
    hint_->setText(element == nullptr
                       ? translated(kContext, "Select an element at the top of the file to correct "
                                              "its properties before it comes in.")
                       : toQt(element->elementClass().displayName()));
    if (element == nullptr)
        return;
    position_ = position;
    build(*element);
}

void NewElementForm::build(model::Element& element) {
    page_ = new QWidget(this);
    layout_ = new QFormLayout(page_);
    layout_->setContentsMargins(0, 6, 0, 0);
    layout_->setRowWrapPolicy(QFormLayout::WrapAllRows);
    form_ = std::make_unique<core::OpenForm>(element);
    for (ui::Control* const control : form_->controls())
        if (form_->button(control->key()) == nullptr) // nothing is imported into what is not there
            addRow(*control);
    static_cast<QVBoxLayout*>(layout())->insertWidget(2, page_);
    refresh();
}

void NewElementForm::addRow(ui::Control& control) {
    auto* const row = new FormRow(control, page_);
    auto& field = row->field();
    auto* const label = new QLabel(withoutMnemonic(toQt(control.texts().label)), page_);
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(&field.widget());
    layout_->addRow(label, row);
    connect(&field, &Field::edited, this, [this, &field] { take(field); });
    rows_.push_back(row);
}

void NewElementForm::take(Field& field) {
    if (session_->isBusy())
        return;
    const auto value = field.entered();
    if (!value)
        return;
    draft_->correct(*position_, field.control(), *value);
    refresh();
    if (!draft_->isCurrent())
        emit corrected();
}

void NewElementForm::commit() {
    for (const FormRow* const row : rows_)
        row->field().commit();
}

void NewElementForm::refresh() {
    if (session_->isBusy())
        return;
    for (FormRow* const row : rows_) {
        row->refresh();
        layout_->setRowVisible(row, row->field().control().isVisible());
    }
}

} // namespace corvane::workbench::gui
