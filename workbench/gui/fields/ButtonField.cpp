#include "workbench/gui/fields/ButtonField.hpp"

#include "workbench/gui/Icons.hpp"
#include "workbench/gui/Text.hpp"

#include <QPushButton>

namespace corvane::workbench::gui {

ButtonField::ButtonField(ui::PushButton& control, QWidget* parent)
    : Field(control, *new QPushButton(icon("import"), toQt(control.texts().label), parent)) {
    auto* const button = static_cast<QPushButton*>(&widget());
    button->setAutoDefault(true);
    connect(button, &QPushButton::clicked, this, &Field::pressed);
}

} // namespace corvane::workbench::gui
