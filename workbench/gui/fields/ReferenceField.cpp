#include "workbench/gui/fields/ReferenceField.hpp"

#include "workbench/gui/look/Text.hpp"

#include <QSignalBlocker>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ReferenceField";

QString textOf(const QString& path) {
    return path.isEmpty() ? translated(kContext, "(none)") : path;
}

} // namespace

void LateComboBox::showPopup() {
    emit choicesNeeded();
    QComboBox::showPopup();
}

void LateComboBox::keyPressEvent(QKeyEvent* event) {
    emit choicesNeeded();
    QComboBox::keyPressEvent(event);
}

void LateComboBox::wheelEvent(QWheelEvent* event) {
    emit choicesNeeded();
    QComboBox::wheelEvent(event);
}

ReferenceField::ReferenceField(ui::ReferenceChooser& control, QWidget* parent)
    : Field(control, *new LateComboBox(parent)),
      control_(&control),
      box_(static_cast<LateComboBox*>(&widget())) {
    box_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box_->setMinimumContentsLength(24);
    connect(box_, &LateComboBox::choicesNeeded, this, &ReferenceField::offerCandidates);
    connect(box_, &QComboBox::activated, this, &Field::edited);
}

void ReferenceField::refresh() {
    complete_ = false;
    showPath(toQt(std::get<std::u16string>(control_->value())));
}

// What is missing stays a line of its own until something else is chosen.
void ReferenceField::showPath(const QString& path) {
    const QSignalBlocker quiet(box_);
    if (!complete_)
        box_->clear();
    if (box_->findData(path) < 0)
        box_->addItem(textOf(path), path);
    box_->setCurrentIndex(box_->findData(path));
}

void ReferenceField::offerCandidates() {
    if (complete_)
        return;
    const QSignalBlocker quiet(box_);
    const auto current = box_->currentData().toString();
    box_->clear();
    box_->addItem(textOf({}), QString());
    for (const auto* const candidate : control_->candidates()) {
        const auto path = toQt(candidate->path());
        box_->addItem(path, path);
    }
    complete_ = true;
    showPath(current);
}

std::optional<ui::ControlValue> ReferenceField::entered() const {
    return toUtf16(box_->currentData().toString());
}

} // namespace corvane::workbench::gui
