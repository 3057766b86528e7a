#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <QWidget>

#include <cstdint>

class QLabel;

namespace corvane::workbench::gui {

/// A field of the form with the error that it has, if any, below it; or else with what is to be
/// remarked on its value.
class FormRow : public QWidget {
    Q_OBJECT

public:
    /// Makes the field. `control` must outlive the row.
    FormRow(ui::Control& control, QWidget* parent);

    [[nodiscard]] Field& field() const { return *field_; }

    /// Shows what the control holds now: value, and error or remark.
    void refresh();

private:
    enum class Kind : std::uint8_t { error, remark };
    void show(Kind kind, const QString& text);

    Field* field_;
    QLabel* picture_;
    QLabel* text_; // of the error or the remark
};

} // namespace corvane::workbench::gui
