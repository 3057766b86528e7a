#include "workbench/core/ElementWalk.hpp"

#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>

namespace corvane::workbench::core {

void forEachElement(ElementList elements, FunctionRef<void(model::Element&)> visit) {
    for (const auto& element : elements) {
        visit(*element);
        forEachElement(element->childElements(), visit);
    }
}

void configureAndPublish(ElementList elements) {
    bindings::PropertyConfigurationContext context;
    forEachElement(elements, [&](model::Element& element) {
        context.begin(*element.getSkillElement());
        element.getSkillElement()->configureProperties(context);
        context.commit();
    });
    forEachElement(elements,
                   [](model::Element& element) { element.getSkillElement()->publishConfigured(); });
}

void validateReferences(ElementList elements) {
    forEachElement(
        elements, [](model::Element& element) { element.getSkillElement()->validateReferences(); });
}

} // namespace corvane::workbench::core
