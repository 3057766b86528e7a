#include "workbench/gui/fields/InfoTextField.hpp"

#include "workbench/gui/Text.hpp"

namespace corvane::workbench::gui {

InfoTextField::InfoTextField(ui::InfoField& control, QWidget* parent)
    : Field(control, *new QLineEdit(parent)),
      control_(&control),
      line_(static_cast<QLineEdit*>(&widget())) {
    line_->setReadOnly(true);
    line_->setFrame(false);
}

void InfoTextField::refresh() {
    const auto text = toQt(std::get<std::u16string>(control_->value()));
    if (line_->text() != text)
        line_->setText(text);
}

} // namespace corvane::workbench::gui
