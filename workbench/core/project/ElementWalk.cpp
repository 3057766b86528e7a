#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/workbench/bindings/PropertyConfigurationContext.hpp>

namespace corvane::workbench::core {

void forEachElement(ElementList elements, function_ref<void(model::Element&)> visit) {
    for (std::size_t index = 0; index != elements.size(); ++index) {
        fetchAhead(elements, index);
        visit(*elements[index]);
        forEachElement(elements[index]->childElements(), visit);
    }
}

std::size_t countElements(ElementList elements) {
    std::size_t count = 0;
    forEachElement(elements, [&](model::Element&) { ++count; });
    return count;
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
