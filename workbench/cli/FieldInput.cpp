#include "workbench/cli/FieldInput.hpp"

#include "workbench/cli/TextOutput.hpp"

#include <corvane/utils/numeric/ParseNumber.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

class ValueReader final : public ui::ControlVisitor {
public:
    explicit ValueReader(std::string_view text)
        : text_(text), wide_(utils::string::detail::utf8ToUtf16(text)) {}

    void visit(ui::TextField&) override { value = wide_; }
    void visit(ui::ReferenceChooser&) override { value = wide_; }

    void visit(ui::SpinBoxControl& control) override {
        const auto number = utils::numeric::parseDigits<std::uint64_t>(text_);
        if (!number)
            refuse(control, "“" + std::string(text_) + "” is not a decimal number");
        value = *number;
    }

    void visit(ui::ChoiceList& control) override {
        const auto& choices = control.choices();
        auto chosen = std::ranges::find(choices, wide_, &ui::ChoiceList::Choice::value);
        if (chosen == choices.end())
            chosen = std::ranges::find(choices, wide_, &ui::ChoiceList::Choice::text);
        if (chosen != choices.end())
            value = chosen->value;
        else
            refuse(control,
                   "“" + std::string(text_) + "” is not one of the choices: " + listOf(choices));
    }

    void visit(ui::FlagChoice& control) override {
        if (text_ == "true" || wide_ == control.stateText(true))
            value = true;
        else if (text_ == "false" || wide_ == control.stateText(false))
            value = false;
        else
            refuse(control,
                   "“" + std::string(text_) + "” is not one of the choices: false, true, " +
                       narrow(control.stateText(false)) + ", " + narrow(control.stateText(true)));
    }

    void visit(ui::InfoField& control) override {
        refuse(control, "the field is shown for information and cannot be set");
    }
    void visit(ui::PushButton& control) override {
        refuse(control, "a button has no value that could be set");
    }

    ui::ControlValue value;

private:
    [[noreturn]] static void refuse(const ui::Control& control, const std::string& reason) {
        throw std::runtime_error(narrow(control.texts().label) + ": " + reason);
    }

    static std::string listOf(std::span<const ui::ChoiceList::Choice> choices) {
        std::string list;
        for (const auto& choice : choices) {
            if (!list.empty())
                list += ", ";
            list += narrow(choice.value);
        }
        return list;
    }

    std::string_view text_;
    std::u16string wide_;
};

} // namespace

ui::ControlValue readValue(ui::Control& control, std::string_view text) {
    ValueReader reader(text);
    control.accept(reader);
    return std::move(reader.value);
}

} // namespace corvane::workbench::cli
