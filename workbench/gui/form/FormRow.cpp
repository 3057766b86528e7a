#include "workbench/gui/form/FormRow.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"

#include <QLabel>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr int kDefaultWidth = 300;
constexpr int kErrorPicture = 16;

} // namespace

FormRow::FormRow(ui::Control& control, QWidget* parent)
    : QWidget(parent),
      field_(makeField(control, this)),
      picture_(new QLabel(this)),
      error_(plainLabel(this)) {
    auto& widget = field_->widget();
    // Fields that ask for nothing are as wide as each other.
    if (const auto width = field_->preferredWidth())
        widget.setFixedWidth(*width > 0 ? *width : kDefaultWidth);
    error_->setWordWrap(true);
    error_->setForegroundRole(kErrorRole);
    error_->setObjectName(widget.objectName() + QStringLiteral(" error"));
    picture_->setPixmap(icon("error").pixmap(kErrorPicture));
    picture_->setAlignment(Qt::AlignTop);

    auto* const errorLine = new QHBoxLayout;
    errorLine->setSpacing(5);
    errorLine->addWidget(picture_);
    errorLine->addWidget(error_, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(&widget, 0, Qt::AlignLeft);
    layout->addLayout(errorLine);
    setFocusProxy(&widget);
    showError({});
}

void FormRow::refresh() {
    field_->refresh();
    const auto* const error = field_->control().error();
    showError(error != nullptr ? toQt(*error) : QString());
}

void FormRow::showError(const QString& error) {
    error_->setText(error);
    error_->setVisible(!error.isEmpty());
    picture_->setVisible(!error.isEmpty());
    // A screen reader says both when the field is entered.
    const auto description = toQt(field_->control().texts().description);
    field_->widget().setAccessibleDescription(
        error.isEmpty() ? description : error + QStringLiteral(". ") + description);
}

} // namespace corvane::workbench::gui
