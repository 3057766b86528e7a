#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <corvane/workbench/ui/Choice.hpp>

#include <QComboBox>

namespace corvane::workbench::gui {

/// A choice of one out of several texts, or between the two states of a flag.
class ChoiceField final : public Field {
    Q_OBJECT

public:
    ChoiceField(ui::ChoiceList& control, QWidget* parent);
    ChoiceField(ui::FlagChoice& control, QWidget* parent);

    void refresh() override;
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override;

private:
    ChoiceField(ui::Control& control, QWidget* parent);
    void offer(ui::ControlValue value, const QString& text);

    QComboBox* box_;
    std::vector<ui::ControlValue> values_; // of the choices, in their order
};

} // namespace corvane::workbench::gui
