#include "workbench/core/edit/workspace/FieldText.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
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
#include <span>
#include <utility>

namespace corvane::workbench::core {

using utils::string::detail::utf16ToUtf8;
using utils::string::detail::utf8ToUtf16;

std::u16string textOf(const ui::ControlValue& value) {
    if (const auto* const flag = std::get_if<bool>(&value))
        return *flag ? u"true" : u"false";
    if (const auto* const number = std::get_if<std::uint64_t>(&value))
        return utf8ToUtf16(utils::numeric::detail::formatNumber(*number).view());
    const auto* const text = std::get_if<std::u16string>(&value);
    return text == nullptr ? std::u16string() : *text;
}

namespace {

class ValueReader final : public ui::ControlVisitor {
public:
    explicit ValueReader(std::u16string_view text) : text_(text) {}

    void visit(ui::TextField&) override { value = std::u16string(text_); }
    void visit(ui::ReferenceChooser&) override { value = std::u16string(text_); }

    void visit(ui::SpinBoxControl& control) override {
        const auto digits = utf16ToUtf8(text_);
        if (const auto number = utils::numeric::parseDigits<std::uint64_t>(digits))
            value = *number;
        else if (!digits.empty() &&
                 std::ranges::all_of(digits, utils::string::ascii::isDigit<char>))
            value = std::unexpected(control.limitsText()); // too large for any field
        else
            refuse("“{}” is not a decimal number", {text_});
    }

    void visit(ui::ChoiceList& control) override {
        const auto& choices = control.choices();
        auto chosen = std::ranges::find(choices, text_, &ui::ChoiceList::Choice::value);
        if (chosen == choices.end())
            chosen = std::ranges::find(choices, text_, &ui::ChoiceList::Choice::text);
        if (chosen != choices.end())
            value = chosen->value;
        else
            refuse("“{}” is not one of the choices: {}", {text_, listOf(choices)});
    }

    void visit(ui::FlagChoice& control) override {
        if (text_ == u"true" || text_ == control.stateText(true))
            value = true;
        else if (text_ == u"false" || text_ == control.stateText(false))
            value = false;
        else
            refuse("“{}” is not one of the choices: false, true, {}, {}",
                   {text_, control.stateText(false), control.stateText(true)});
    }

    void visit(ui::InfoField&) override {
        refuse("the field is shown for information and cannot be set");
    }
    void visit(ui::PushButton&) override { refuse("a button has no value that could be set"); }

    std::expected<ui::ControlValue, std::u16string> value;

private:
    void refuse(std::string_view reason,
                std::initializer_list<std::u16string_view> arguments = {}) {
        value = std::unexpected(editText(reason, arguments));
    }

    static std::u16string listOf(std::span<const ui::ChoiceList::Choice> choices) {
        std::u16string list;
        for (const auto& choice : choices)
            list.append(list.empty() ? u"" : u", ").append(choice.value);
        return list;
    }

    std::u16string_view text_;
};

} // namespace

std::expected<ui::ControlValue, std::u16string> valueFromText(ui::Control& control,
                                                              std::u16string_view text) {
    // The value that is there is no change, even if the editor would not offer it.
    if (control.storedValue() != ui::StoredValue())
        if (auto current = control.value(); textOf(current) == text)
            return current;
    ValueReader reader(text);
    control.accept(reader);
    return std::move(reader.value);
}

} // namespace corvane::workbench::core
