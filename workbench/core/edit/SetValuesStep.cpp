#include "workbench/core/edit/SetValuesStep.hpp"

#include "workbench/core/edit/EditText.hpp"
#include "workbench/core/edit/Fields.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <ranges>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

std::u16string stepText(std::size_t elements, std::span<const FieldValue> values) {
    const auto& label = values.front().label;
    const auto count = utf8ToUtf16(utils::numeric::detail::formatNumber(elements).view());
    if (elements != 1)
        return editText("Change “{}” of {} elements", {label, count});
    return values.size() == 1 ? editText("Change “{}”", {label}) : editText("Change fields");
}

[[noreturn]] void refuseField(const Element& element, std::u16string_view label,
                              std::u16string_view reason) {
    refuseEdit("{}: {}: {}", {utf8ToUtf16(element.path()), label, reason});
}

/// Puts values back, with one form for changes of one element that stand together.
template <class Changes>
void restore(Changes&& changes, auto valueOf) {
    const Element* element = nullptr;
    std::optional<OpenForm> form;
    for (const auto& change : changes) {
        if (element != change.element)
            form.emplace(*change.element);
        element = change.element;
        form->controls()[change.control]->restoreValue(valueOf(change));
    }
}

} // namespace

std::unique_ptr<SetValuesStep> SetValuesStep::make(Workspace& workspace,
                                                   std::span<Element* const> elements,
                                                   std::span<const FieldValue> values) {
    if (elements.empty() || values.empty())
        return nullptr;
    std::unique_ptr<SetValuesStep> step(new SetValuesStep(stepText(elements.size(), values)));
    try {
        for (Element* const element : elements)
            step->setOne(*element, values);
    } catch (...) {
        restore(std::views::reverse(step->changes_), [](auto& change) { return change.before; });
        throw;
    }
    if (step->changes_.empty())
        return nullptr;
    step->tellAll(workspace);
    return step;
}

void SetValuesStep::setOne(Element& element, std::span<const FieldValue> values) {
    const OpenForm form(element);
    const auto controls = form.controls();
    const auto first = changes_.size();
    for (const auto& [label, value] : values) {
        auto& control = fieldOf(form, label);
        if (control.value() == value)
            continue;
        auto before = control.storedValue();
        if (const auto result = control.setValue(value); !result)
            refuseField(element, label, result.error());
        const auto index = std::ranges::find(controls, &control) - controls.begin();
        auto after = control.storedValue();
        if (after != before)
            changes_.push_back(
                {&element, static_cast<std::size_t>(index), std::move(before), std::move(after)});
    }
    // Asked last, as one value may show the field of another.
    for (const auto& change : std::span(changes_).subspan(first)) {
        const auto& control = *controls[change.control];
        if (!control.isVisible())
            refuseField(element, control.texts().label, editText("the field is not shown now"));
    }
}

void SetValuesStep::undo(Workspace& workspace) {
    restore(std::views::reverse(changes_), [](auto& change) { return change.before; });
    tellAll(workspace);
}

void SetValuesStep::redo(Workspace& workspace) {
    restore(changes_, [](auto& change) { return change.after; });
    tellAll(workspace);
}

void SetValuesStep::tellAll(Workspace& workspace) const {
    const Element* told = nullptr;
    for (const auto& change : changes_) {
        if (change.element == told)
            continue;
        workspace.tell([&](auto& observer) { observer.valuesChanged(*change.element); });
        told = change.element;
    }
}

} // namespace corvane::workbench::core
