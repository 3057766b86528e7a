#pragma once

#include <QLineEdit>

namespace corvane::workbench::gui {

/// A line in which the user types what a list shall show. Escape clears it.
class FilterLine final : public QLineEdit {
    Q_OBJECT

public:
    /// `prompt` is seen while the line is empty; `spoken` names the line for screen readers.
    FilterLine(const QString& prompt, const QString& spoken, QWidget* parent);

signals:
    /// The user is done with the line and wants to go to the list.
    void left();

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace corvane::workbench::gui
