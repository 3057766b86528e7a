#include "workbench/gui/fields/NumberField.hpp"

namespace corvane::workbench::gui {

NumberField::NumberField(ui::SpinBoxControl& control, QWidget* parent)
    : Field(control, *new UnsignedSpinBox(parent)),
      control_(&control),
      box_(static_cast<UnsignedSpinBox*>(&widget())) {
    const auto& range = control.range();
    box_->setRange(range.minimum, range.maximum, range.step);
    connect(box_, &UnsignedSpinBox::valueEntered, this, &Field::edited);
}

void NumberField::refresh() { box_->setValue(std::get<std::uint64_t>(control_->value())); }

std::optional<ui::ControlValue> NumberField::entered() const {
    return static_cast<std::uint64_t>(box_->value());
}

} // namespace corvane::workbench::gui
