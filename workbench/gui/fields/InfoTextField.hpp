#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <corvane/workbench/ui/InfoField.hpp>

#include <QLineEdit>

namespace corvane::workbench::gui {

/// A text that can be read and copied but not changed.
class InfoTextField final : public Field {
    Q_OBJECT

public:
    InfoTextField(ui::InfoField& control, QWidget* parent);

    void refresh() override;
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override { return std::nullopt; }

private:
    ui::InfoField* control_;
    QLineEdit* line_;
};

} // namespace corvane::workbench::gui
