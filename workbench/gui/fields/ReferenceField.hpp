#pragma once

#include "workbench/gui/fields/Field.hpp"

#include <corvane/workbench/ui/ReferenceChooser.hpp>

#include <QComboBox>

namespace corvane::workbench::gui {

/// A combo box that asks what it can offer only when it is opened or searched.
class LateComboBox final : public QComboBox {
    Q_OBJECT

public:
    explicit LateComboBox(QWidget* parent) : QComboBox(parent) {}

    void showPopup() override;

signals:
    void choicesNeeded();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

/// A choice of another element, by its path; nothing is a choice too. What can be chosen is looked
/// for through the whole project, so it is not before the user asks.
class ReferenceField final : public Field {
    Q_OBJECT

public:
    ReferenceField(ui::ReferenceChooser& control, QWidget* parent);

    void refresh() override;
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override;

private:
    void offerCandidates();
    void showPath(const QString& path);

    ui::ReferenceChooser* control_;
    LateComboBox* box_;
    bool complete_ = false; // the candidates are in the box
};

} // namespace corvane::workbench::gui
