#include "workbench/core/project/PropertyErrors.hpp"

#include "workbench/core/project/OpenForm.hpp"

namespace corvane::workbench::core {

namespace {

std::u16string labelOf(const OpenForm& form, bindings::PropertyId property) {
    for (const ui::Control* const control : form.controls())
        if (control->property() && control->property()->id() == property)
            return control->texts().label;
    return {};
}

} // namespace

std::vector<PropertyError> propertyErrors(ElementList elements) {
    std::vector<PropertyError> errors;
    forEachElement(elements, [&](model::Element& element) {
        if (element.getSkillElement()->localPropertyErrorCount() == 0)
            return;
        const OpenForm form(element);
        element.getSkillElement()->forEachError(
            [&](bindings::PropertyId property, const std::u16string& message) {
                errors.push_back({&element, labelOf(form, property), message});
            });
    });
    return errors;
}

} // namespace corvane::workbench::core
