#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <QObject>
#include <QWidget>

#include <optional>

namespace corvane::workbench::gui {

/// Joins a control of a form to the widget that shows it. A field never changes the control: it
/// says what the user entered, and shows what the control holds when told to. It belongs to its
/// widget and goes with it; the control must outlive it.
class Field : public QObject {
    Q_OBJECT

public:
    [[nodiscard]] QWidget& widget() const { return *widget_; }
    [[nodiscard]] ui::Control& control() const { return *control_; }

    /// Shows what the control holds now.
    virtual void refresh() = 0;

    /// Takes what is being typed as entered, as if the user had left the field.
    virtual void commit() {}

    /// Selects what the field shows, so that typing replaces it.
    virtual void selectContent() {}

    /// What the user has entered; nothing for a field that is only read.
    [[nodiscard]] virtual std::optional<ui::ControlValue> entered() const = 0;

    /// The width in pixels that the control asks for, 0 where that is left to the form; nothing for
    /// a field that is as wide as its text.
    [[nodiscard]] virtual std::optional<int> preferredWidth() const { return 0; }

signals:
    /// The user has entered something.
    void edited();
    /// The user has pressed the button that the field is.
    void pressed();

protected:
    Field(ui::Control& control, QWidget& widget)
        : QObject(&widget), widget_(&widget), control_(&control) {}

private:
    QWidget* widget_;
    ui::Control* control_;
};

/// The field for a control, of the kind that the control asks for; its widget belongs to `parent`
/// and carries the control's texts for tooltips, help and screen readers.
[[nodiscard]] Field* makeField(ui::Control& control, QWidget* parent);

} // namespace corvane::workbench::gui
