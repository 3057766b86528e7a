#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/ControlCharacters.hpp>
#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>

namespace corvane::workbench::ui {

namespace {

using utils::string::detail::utf8ToUtf16;

constexpr std::string_view kContext = "corvane::workbench::ui::Control";

SetResult refuse(std::string_view reason, std::initializer_list<std::u16string_view> arguments) {
    return std::unexpected(i18n::fill(i18n::translate(kContext, reason), arguments));
}

std::u16string decimal(std::uint64_t number) {
    return utf8ToUtf16(utils::numeric::detail::formatNumber(number).view());
}

// As deep as elements nest, which the tree bounds.
void collect(const model::Element& parent,
             const ControlFunction<bool(const model::Element&)>& accepts,
             std::vector<model::Element*>& found) {
    for (const auto& child : parent.childElements()) {
        if (accepts(*child))
            found.push_back(child.get());
        collect(*child, accepts, found);
    }
}

} // namespace

ControlVisitor::~ControlVisitor() = default;

Control::~Control() = default;

void Control::restoreValue(const StoredValue&) {}

SetResult Control::refuseType() {
    return refuse("the field does not take a value of this type", {});
}

SetResult requireOneLine(std::u16string_view text, std::u16string_view subject) {
    if (utils::string::hasControlCharacter(text))
        return refuse("{} must be one line without control characters", {subject});
    return {};
}

SetResult TextField::setValue(const ControlValue& value) {
    const auto* const text = std::get_if<std::u16string>(&value);
    if (text == nullptr)
        return refuseType();
    if (*text != accessor_.get())
        if (auto oneLine = requireOneLine(*text, i18n::translate(kContext, "the value")); !oneLine)
            return oneLine;
    accessor_.set(corrected({*text, text->size(), text->size()}).text);
    return {};
}

TextEdit TextField::corrected(TextEdit edit) const {
    if (settings_.fixUp)
        settings_.fixUp(edit);
    return edit;
}

void TextField::restoreValue(const StoredValue& value) {
    accessor_.set(std::get<std::u16string>(value));
}

std::u16string SpinBoxControl::limitsText() const {
    return i18n::fill(i18n::translate(kContext, "the value must lie between {} and {}"),
                      {decimal(range_.minimum), decimal(range_.maximum)});
}

SetResult SpinBoxControl::setValue(const ControlValue& value) {
    const auto* const number = std::get_if<std::uint64_t>(&value);
    if (number == nullptr)
        return refuseType();
    if (*number < range_.minimum || *number > range_.maximum)
        return std::unexpected(limitsText());
    store(*number);
    return {};
}

void SpinBoxControl::restoreValue(const StoredValue& value) {
    store(std::get<std::uint64_t>(value));
}

SetResult InfoField::setValue(const ControlValue&) {
    return refuse("the field is shown for information and cannot be set", {});
}

SetResult ChoiceList::setValue(const ControlValue& value) {
    const auto* const chosen = std::get_if<std::u16string>(&value);
    if (chosen == nullptr)
        return refuseType();
    if (std::ranges::find(choices_, *chosen, &Choice::value) == choices_.end())
        return refuse("“{}” is not one of the choices", {*chosen});
    accessor_.set(*chosen);
    return {};
}

void ChoiceList::restoreValue(const StoredValue& value) {
    accessor_.set(std::get<std::u16string>(value));
}

SetResult FlagChoice::setValue(const ControlValue& value) {
    const auto* const state = std::get_if<bool>(&value);
    if (state == nullptr)
        return refuseType();
    accessor_.set(*state);
    return {};
}

void FlagChoice::restoreValue(const StoredValue& value) { accessor_.set(std::get<bool>(value)); }

std::vector<model::Element*> ReferenceChooser::candidates() const {
    std::vector<model::Element*> found;
    collect(*candidates_.scope(), candidates_.accepts, found);
    return found;
}

model::Element* ReferenceChooser::candidateAt(std::string_view path) const {
    const auto* const scope = candidates_.scope();
    const auto* const model = host::modelOf(*scope);
    auto* const element = model == nullptr ? nullptr : model->findElement(path);
    if (element == nullptr || !candidates_.accepts(*element))
        return nullptr;
    const auto* above = element->parentElement();
    while (above != nullptr && above != scope)
        above = above->parentElement();
    return above == nullptr ? nullptr : element;
}

ControlValue ReferenceChooser::value() const { return utf8ToUtf16(accessor_.get().text()); }

SetResult ReferenceChooser::setValue(const ControlValue& value) {
    const auto* const text = std::get_if<std::u16string>(&value);
    if (text == nullptr)
        return refuseType();
    if (text->empty()) {
        accessor_.set({});
        return {};
    }
    if (auto* const candidate = candidateAt(utils::string::detail::utf16ToUtf8(*text))) {
        accessor_.set(candidate->makeReference());
        return {};
    }
    return refuse("“{}” is not one of the elements that can be chosen", {*text});
}

void ReferenceChooser::restoreValue(const StoredValue& value) {
    accessor_.set(std::get<model::ElementReference>(value));
}

SetResult PushButton::setValue(const ControlValue&) {
    return refuse("a button has no value that could be set", {});
}

} // namespace corvane::workbench::ui
