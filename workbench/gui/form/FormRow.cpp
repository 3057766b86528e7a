#include "workbench/gui/form/FormRow.hpp"

#include "workbench/core/project/FieldRemarks.hpp"
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
      text_(plainLabel(this)) {
    auto& widget = field_->widget();
    // Fields that ask for nothing are as wide as each other.
    if (const auto width = field_->preferredWidth())
        widget.setFixedWidth(*width > 0 ? *width : kDefaultWidth);
    text_->setWordWrap(true);
    text_->setObjectName(widget.objectName() + QStringLiteral(" error"));
    picture_->setAlignment(Qt::AlignTop);

    auto* const errorLine = new QHBoxLayout;
    errorLine->setSpacing(5);
    errorLine->addWidget(picture_);
    errorLine->addWidget(text_, 1);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(3);
    layout->addWidget(&widget, 0, Qt::AlignLeft);
    layout->addLayout(errorLine);
    setFocusProxy(&widget);
    show(Kind::error, {});
}

void FormRow::refresh() {
    field_->refresh();
    if (const auto* const error = field_->control().error())
        show(Kind::error, toQt(*error));
    else
        show(Kind::remark, toQt(core::remarkOn(field_->control())));
}

void FormRow::show(Kind kind, const QString& text) {
    text_->setText(text);
    text_->setVisible(!text.isEmpty());
    text_->setForegroundRole(kind == Kind::error ? kErrorRole : QPalette::WindowText);
    picture_->setPixmap(icon(kind == Kind::error ? "error" : "problem").pixmap(kErrorPicture));
    picture_->setVisible(!text.isEmpty());
    // A screen reader says both when the field is entered.
    const auto description = toQt(field_->control().texts().description);
    field_->widget().setAccessibleDescription(
        text.isEmpty() ? description : text + QStringLiteral(". ") + description);
}

} // namespace corvane::workbench::gui
