#pragma once

#include <corvane/workbench/ui/Control.hpp>

namespace corvane::workbench::ui {

/// A text that is shown and cannot be edited.
class CORVANE_EXPORT InfoField final : public Control {
public:
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
