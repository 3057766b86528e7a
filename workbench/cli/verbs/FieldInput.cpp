#include "workbench/cli/verbs/FieldInput.hpp"

#include "workbench/cli/output/TextOutput.hpp"

#include <corvane/utils/numeric/ParseNumber.hpp>
#include <corvane/utils/string/Ascii.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <utility>

namespace corvane::workbench::cli {

namespace {

class ValueReader final : public ui::ControlVisitor {
public:
    explicit ValueReader(std::string_view text)
        : text_(text), wide_(utils::string::detail::utf8ToUtf16(text)) {}

    void visit(ui::TextField&) override { value = wide_; }
    void visit(ui::ReferenceChooser&) override { value = wide_; }

    void visit(ui::SpinBoxControl& control) override {
        if (const auto number = utils::numeric::parseDigits<std::uint64_t>(text_))
            value = *number;
        else if (!text_.empty() && std::ranges::all_of(text_, utils::string::ascii::isDigit<char>))
            refuse(narrow(control.limitsText())); // too large for any field
        else
            refuse(quoted() + " is not a decimal number");
    }

    void visit(ui::ChoiceList& control) override {
        const auto& choices = control.choices();
        auto chosen = std::ranges::find(choices, wide_, &ui::ChoiceList::Choice::value);
        if (chosen == choices.end())
            chosen = std::ranges::find(choices, wide_, &ui::ChoiceList::Choice::text);
        if (chosen != choices.end())
            value = chosen->value;
        else
            refuse(quoted() + " is not one of the choices: " + listOf(choices));
    }

    void visit(ui::FlagChoice& control) override {
        if (text_ == "true" || wide_ == control.stateText(true))
            value = true;
        else if (text_ == "false" || wide_ == control.stateText(false))
            value = false;
        else
            refuse(quoted() + " is not one of the choices: false, true, " +
                   narrow(control.stateText(false)) + ", " + narrow(control.stateText(true)));
    }

    void visit(ui::InfoField&) override {
        refuse("the field is shown for information and cannot be set");
    }
    void visit(ui::PushButton&) override { refuse("a button has no value that could be set"); }

    std::expected<ui::ControlValue, std::string> value;

private:
    void refuse(std::string reason) { value = std::unexpected(std::move(reason)); }

    [[nodiscard]] std::string quoted() const { return "“" + std::string(text_) + "”"; }

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

std::expected<ui::ControlValue, std::string> readValue(ui::Control& control,
                                                       std::string_view text) {
    if (!utils::string::detail::isValidUtf8(text))
        return std::unexpected("the value “" + utils::string::detail::replaceMalformedUtf8(text) +
                               "” is not valid UTF-8");
    // The value that is there is no change, even if the editor would not offer it.
    if (control.storedValue() != ui::StoredValue())
        if (auto current = control.value(); textOf(current) == text)
            return current;
    ValueReader reader(text);
    control.accept(reader);
    return std::move(reader.value);
}

} // namespace corvane::workbench::cli
