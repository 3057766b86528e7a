#pragma once

#include "workbench/gui/fields/Field.hpp"
#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <corvane/workbench/ui/SpinBox.hpp>

namespace corvane::workbench::gui {

/// A number with limits, of any unsigned width.
class NumberField final : public Field {
    Q_OBJECT

public:
    NumberField(ui::SpinBoxControl& control, QWidget* parent);

    void refresh() override;
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override;

private:
    ui::SpinBoxControl* control_;
    UnsignedSpinBox* box_;
};

} // namespace corvane::workbench::gui
