#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <corvane/workbench/ui/PushButton.hpp>

namespace corvane::workbench::gui {

/// A button that imports a file.
class ButtonField final : public Field {
    Q_OBJECT

public:
    ButtonField(ui::PushButton& control, QWidget* parent);

    void refresh() override {}
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override { return std::nullopt; }
};

} // namespace corvane::workbench::gui
