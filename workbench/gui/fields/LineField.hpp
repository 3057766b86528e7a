#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <corvane/workbench/ui/TextField.hpp>

#include <QLineEdit>

namespace corvane::workbench::gui {

/// A text field: a line with a placeholder. Each edit goes through the control's fix-up before it
/// is seen.
class LineField final : public Field {
    Q_OBJECT

public:
    LineField(ui::TextField& control, QWidget* parent);

    void refresh() override;
    /// As it was typed: whoever sets it lets the control fix it up, once.
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override;

private:
    void fixUp(const QString& typed);

    ui::TextField* control_;
    QLineEdit* line_;
    QString typed_;
};

} // namespace corvane::workbench::gui
