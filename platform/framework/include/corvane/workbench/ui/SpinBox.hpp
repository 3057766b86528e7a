#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <concepts>

namespace corvane::workbench::ui {

/// A number field with limits. The limits hold for input: a stored value outside them is shown as
/// it is.
class CORVANE_EXPORT SpinBoxControl : public Control {
public:
    /// In whatever unit the field counts, which its label or description names.
    struct Range {
        std::uint64_t minimum; // both limits can be entered
        std::uint64_t maximum;
        std::uint64_t step; // of an arrow key or the wheel; numbers between the steps can be typed
    };
    struct Settings {
        int preferredWidth = 0; // pixels; 0 leaves it to the layout
        int minimumDigits = 0;  // a shorter number is shown with zeros in front
    };

    [[nodiscard]] const Range& range() const { return range_; }
    /// How the number is drawn. The command line, which draws nothing, prints it without zeros.
    [[nodiscard]] const Settings& settings() const { return settings_; }

    /// The reason for which a number outside the limits is refused; translated.
    [[nodiscard]] std::u16string limitsText() const;

    /// Takes a number within the limits. A text is refused, one of digits included: reading it is
    /// the front end's work. So is knowing that the number which is there already is no change,
    /// even outside the limits.
    SetResult setValue(const ControlValue& value) override;

    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
    void restoreValue(const StoredValue& value) override;

protected:
    SpinBoxControl(std::string_view key, Texts texts, bindings::PropertyHandle property,
                   Range range, Settings settings)
        : Control(key, std::move(texts), property), range_(range), settings_(settings) {}
    /// Writes the field. The value is one within the limits, or one that the field held before.
    virtual void store(std::uint64_t value) = 0;

private:
    Range range_;
    Settings settings_;
};

/// A spin box over one unsigned width. The limits lie within the width: beyond it a number that is
/// entered would lose its upper bits.
///
///     rack_("rack", texts, rackProperty, {.get = ..., .set = ...},
///           {.minimum = 0, .maximum = 7, .step = 1}, {.preferredWidth = 200})
template <std::unsigned_integral Number>
class SpinBox final : public SpinBoxControl {
public:
    SpinBox(std::string_view key, Texts texts, bindings::PropertyHandle property,
            Accessor<Number> accessor, Range range, Settings settings)
        : SpinBoxControl(key, std::move(texts), property, range, settings),
          accessor_(std::move(accessor)) {}

    [[nodiscard]] ControlValue value() const override {
        return static_cast<std::uint64_t>(accessor_.get());
    }
    [[nodiscard]] StoredValue storedValue() const override {
        return static_cast<std::uint64_t>(accessor_.get());
    }

private:
    void store(std::uint64_t value) override { accessor_.set(static_cast<Number>(value)); }
    Accessor<Number> accessor_;
};

} // namespace corvane::workbench::ui
