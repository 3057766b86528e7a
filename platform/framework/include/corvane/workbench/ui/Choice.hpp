#pragma once

#include <corvane/workbench/ui/Control.hpp>

#include <array>
#include <vector>

namespace corvane::workbench::ui {

/// A choice of one out of a list of texts. What is stored is a code that never changes, so that
/// documents do not depend on the language in which the texts are shown.
///
///     format_("format", texts, formatProperty, {.get = ..., .set = ...},
///             {{u"dec", translate(kContext, "Decimal")}, {u"hex", translate(kContext, "Hex")}})
///
/// A stored value that none of the choices has, as a document of an older version may bring it, is
/// shown as it is, and stays until another one is chosen; whether it is an error is for the
/// property's validator to say.
class CORVANE_EXPORT ChoiceList final : public Control {
public:
    struct Choice {
        std::u16string value; // what is stored
        std::u16string text;  // what is shown, translated
    };

    /// `choices` are offered in this order; no two have the same value. A text that two of them
    /// share stands for the first of the two on the command line.
    ChoiceList(std::string_view key, Texts texts, bindings::PropertyHandle property,
               Accessor<std::u16string> accessor, std::vector<Choice> choices)
        : Control(key, std::move(texts), property),
          accessor_(std::move(accessor)),
          choices_(std::move(choices)) {}

    /// What is offered, in its order; the same for as long as the control lives.
    [[nodiscard]] const std::vector<Choice>& choices() const { return choices_; }

    /// The stored value, which need not be one that is offered.
    [[nodiscard]] ControlValue value() const override { return accessor_.get(); }
    /// Takes the stored value of one of the choices, not its text: a front end that lets a user
    /// name either looks the text up in `choices`.
    SetResult setValue(const ControlValue& value) override;
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
    [[nodiscard]] StoredValue storedValue() const override { return accessor_.get(); }
    void restoreValue(const StoredValue& value) override;

private:
    Accessor<std::u16string> accessor_;
    std::vector<Choice> choices_;
};

/// A choice between false and true, each with a text of its own.
///
///     writable_("writable", texts, writableProperty, {.get = ..., .set = ...},
///               translate(kContext, "Read Only"), translate(kContext, "Writable"))
class CORVANE_EXPORT FlagChoice final : public Control {
public:
    FlagChoice(std::string_view key, Texts texts, bindings::PropertyHandle property,
               Accessor<bool> accessor, std::u16string falseText, std::u16string trueText)
        : Control(key, std::move(texts), property),
          accessor_(std::move(accessor)),
          stateTexts_{std::move(falseText), std::move(trueText)} {}

    /// The text of a state.
    [[nodiscard]] const std::u16string& stateText(bool state) const {
        return stateTexts_[state ? 1 : 0];
    }

    [[nodiscard]] ControlValue value() const override { return accessor_.get(); }
    /// Takes either state; a number or a text is refused, "true" and 1 included.
    SetResult setValue(const ControlValue& value) override;
    void accept(ControlVisitor& visitor) override { visitor.visit(*this); }
    [[nodiscard]] StoredValue storedValue() const override { return accessor_.get(); }
    void restoreValue(const StoredValue& value) override;

private:
    Accessor<bool> accessor_;
    std::array<std::u16string, 2> stateTexts_;
};

} // namespace corvane::workbench::ui
