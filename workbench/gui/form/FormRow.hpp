#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <QWidget>

class QLabel;

namespace corvane::workbench::gui {

/// A field of the form with the error that it has, if any, below it.
class FormRow : public QWidget {
    Q_OBJECT

public:
    /// Makes the field. `control` must outlive the row.
    FormRow(ui::Control& control, QWidget* parent);

    [[nodiscard]] Field& field() const { return *field_; }

    /// Shows what the control holds now: value and error.
    void refresh();

private:
    void showError(const QString& error);

    Field* field_;
    QLabel* picture_;
    QLabel* error_;
};

} // namespace corvane::workbench::gui
