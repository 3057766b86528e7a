#include "workbench/core/edit/Fields.hpp"

#include "workbench/core/edit/EditText.hpp"

namespace corvane::workbench::core {

namespace {

[[noreturn]] void refuseLabel(std::u16string_view label, std::span<ui::Control* const> controls) {
    if (controls.empty())
        refuseEdit("there is no field “{}”; the element has no fields", {label});
    std::u16string labels;
    for (const ui::Control* const control : controls)
        labels.append(labels.empty() ? u"" : u", ").append(control->texts().label);
    refuseEdit("there is no field “{}”; the fields are: {}", {label, labels});
}

} // namespace

ui::Control& fieldOf(const OpenForm& form, std::u16string_view label) {
    const auto controls = form.controls();
    ui::Control* found = nullptr;
    for (ui::Control* const control : controls) {
        if (control->texts().label != label)
            continue;
        if (found != nullptr)
            refuseEdit("there are several fields “{}”", {label});
        found = control;
    }
    if (found == nullptr)
        refuseLabel(label, controls);
    return *found;
}

} // namespace corvane::workbench::core
