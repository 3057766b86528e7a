#pragma once

#include <corvane/workbench/ui/Control.hpp>

namespace corvane::workbench::ui {

/// A text that is shown and cannot be edited: one that the element derives from other fields. Open
/// forms read it again when the element publishes something, so a change of it is published like
/// that of any property (`PropertyController::publishValue`, where nothing validates it).
class CORVANE_EXPORT InfoField final : public Control {
public:
    /// `get` gives the text to show, translated where it holds words, at each look.
    InfoField(std::string_view key, Texts texts, bindings::PropertyHandle property,
              ControlFunction<std::u16string()> get)
        : Control(key, std::move(texts), property), get_(std::move(get)) {}

    [[nodiscard]] ControlValue value() const override { return get_(); }
    /// Refuses every value.
    SetResult setValue(const ControlValue& value) override;
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }

private:
    ControlFunction<std::u16string()> get_;
};

} // namespace corvane::workbench::ui
