#include "workbench/core/edit/steps/SetValuesStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <ranges>
#include <utility>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

/// `label` is that of the first value's field.
std::u16string stepText(std::size_t elements, std::size_t values, const std::u16string& label) {
    const auto count = utf8ToUtf16(utils::numeric::detail::formatNumber(elements).view());
    if (elements != 1)
        return editText("Change “{}” of {} elements", {label, count});
    return values == 1 ? editText("Change “{}”", {label}) : editText("Change fields");
}

[[noreturn]] void refuseField(const Element& element, std::u16string_view label,
                              std::u16string_view reason) {
    refuseEdit("{}: {}: {}", {utf8ToUtf16(element.path()), label, reason});
}

/// After so many elements whoever waits is told.
constexpr std::size_t kTellEvery = 256;

/// Puts values back, with one form for changes of one element that stand together.
template <class Changes>
void restore(const Workspace& workspace, Changes&& changes, auto valueOf) {
    const Element* element = nullptr;
    const OpenForm* form = nullptr;
    FormSeries forms;
    std::size_t done = 0;
    for (const auto& change : changes) {
        if (element != change.element)
            form = &forms.of(*change.element);
        element = change.element;
        form->controls()[change.control]->restoreValue(valueOf(change));
        if (++done % kTellEvery == 0)
            workspace.tellProgressOnly(done, changes.size());
    }
}

} // namespace

SetValuesStep::SetValuesStep(std::span<Element* const> elements, std::span<const FieldValue> values)
    : elements_(elements.begin(), elements.end()), values_(values.begin(), values.end()) {}

bool SetValuesStep::perform(Workspace& workspace) {
    const auto elements = std::exchange(elements_, {});
    const auto values = std::exchange(values_, {});
    try {
        FormSeries forms;
        for (std::size_t done = 0; done != elements.size(); ++done) {
            if (done % kTellEvery == 0)
                workspace.tellProgress(done, elements.size());
            setOne(*elements[done], forms.of(*elements[done]), elements.size(), values);
        }
    } catch (...) {
        restore(workspace, std::views::reverse(changes_),
                [](auto& change) { return change.before; });
        throw;
    }
    tellAll(workspace);
    return !changes_.empty();
}

void SetValuesStep::setOne(Element& element, const OpenForm& form, std::size_t elements,
                           std::span<const FieldValue> values) {
    if (text().empty())
        setText(stepText(elements, values.size(),
                         fieldWithKey(form, values.front().key).texts().label));
    const auto controls = form.controls();
    const auto first = changes_.size();
    for (const auto& [key, value] : values) {
        auto& control = fieldWithKey(form, key);
        if (control.value() == value)
            continue;
        auto before = control.storedValue();
        if (const auto result = control.setValue(value); !result)
            refuseField(element, control.texts().label, result.error());
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
    restore(workspace, std::views::reverse(changes_), [](auto& change) { return change.before; });
    tellAll(workspace);
}

void SetValuesStep::redo(Workspace& workspace) {
    restore(workspace, changes_, [](auto& change) { return change.after; });
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
