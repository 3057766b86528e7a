#include "workbench/gui/fields/ChoiceField.hpp"

#include "workbench/gui/Text.hpp"

#include <algorithm>

namespace corvane::workbench::gui {

ChoiceField::ChoiceField(ui::Control& control, QWidget* parent)
    : Field(control, *new QComboBox(parent)), box_(static_cast<QComboBox*>(&widget())) {
    box_->setMaxVisibleItems(20);
    connect(box_, &QComboBox::activated, this, &Field::edited);
}

ChoiceField::ChoiceField(ui::ChoiceList& control, QWidget* parent)
    : ChoiceField(static_cast<ui::Control&>(control), parent) {
    for (const auto& choice : control.choices())
        offer(choice.value, toQt(choice.text));
}

ChoiceField::ChoiceField(ui::FlagChoice& control, QWidget* parent)
    : ChoiceField(static_cast<ui::Control&>(control), parent) {
    for (const bool state : {false, true})
        offer(state, toQt(control.stateText(state)));
}

void ChoiceField::offer(ui::ControlValue value, const QString& text) {
    values_.push_back(std::move(value));
    box_->addItem(text);
}

// A stored value that is not offered is shown in place of a choice, and none is chosen.
void ChoiceField::refresh() {
    const auto value = control().value();
    const auto found = std::ranges::find(values_, value);
    const auto index = found == values_.end() ? -1 : static_cast<int>(found - values_.begin());
    const auto* const text = std::get_if<std::u16string>(&value);
    box_->setPlaceholderText(index < 0 && text != nullptr ? toQt(*text) : QString());
    if (box_->currentIndex() != index)
        box_->setCurrentIndex(index);
}

std::optional<ui::ControlValue> ChoiceField::entered() const {
    const int index = box_->currentIndex();
    if (index < 0)
        return std::nullopt;
    return values_[static_cast<std::size_t>(index)];
}

} // namespace corvane::workbench::gui
