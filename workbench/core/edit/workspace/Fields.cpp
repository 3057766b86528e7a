#include "workbench/core/edit/workspace/Fields.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <iterator>
#include <span>
#include <vector>

namespace corvane::workbench::core {

namespace {

using utils::string::detail::utf16ToUtf8;
using utils::string::detail::utf8ToUtf16;

std::u16string listOf(std::span<ui::Control* const> controls, auto textOf) {
    std::u16string list;
    for (const ui::Control* const control : controls)
        list.append(list.empty() ? u"" : u", ").append(textOf(*control));
    return list;
}

[[noreturn]] void refuseLabel(std::u16string_view label, std::span<ui::Control* const> controls) {
    if (controls.empty())
        refuseEdit("there is no field “{}”; the element has no fields", {label});
    refuseEdit("there is no field “{}”; the fields are: {}",
               {label, listOf(controls,
                              [](const ui::Control& control) { return control.texts().label; })});
}

/// The controls with a label.
std::vector<ui::Control*> labelled(std::span<ui::Control* const> controls,
                                   std::u16string_view label) {
    std::vector<ui::Control*> found;
    std::ranges::copy_if(controls, std::back_inserter(found), [&](const ui::Control* control) {
        return control->texts().label == label;
    });
    return found;
}

} // namespace

ui::Control& fieldWithKey(const OpenForm& form, std::string_view key) {
    auto* const control = form.find(key);
    if (control == nullptr)
        refuseLabel(utf8ToUtf16(key), form.controls());
    return *control;
}

ui::Control& fieldOf(const OpenForm& form, std::u16string_view label) {
    const auto controls = form.controls();
    const auto found = labelled(controls, label);
    if (found.size() == 1)
        return *found.front();
    if (found.size() > 1)
        refuseEdit("there are several fields “{}”; their keys are: {}",
                   {label, listOf(found, [](const ui::Control& control) {
                        return utf8ToUtf16(control.key());
                    })});
    auto* const named = form.find(utf16ToUtf8(label));
    if (named == nullptr || labelled(controls, named->texts().label).size() == 1)
        refuseLabel(label, controls);
    return *named;
}

} // namespace corvane::workbench::core
