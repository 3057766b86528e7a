#include <corvane/workbench/bindings/PropertyContainer.hpp>

namespace corvane::workbench::bindings {

PropertyContainer::~PropertyContainer() = default;

void PropertyContainer::propertyErrorCountChanged() {}

void PropertyContainer::forEachSubPropertyContainer(function_ref<void(PropertyContainer&)>) {}

void PropertyContainer::forEachLocalCrossReference(
    function_ref<void(const model::ElementReference&)>) const {}

std::size_t PropertyContainer::localPropertyErrorCount() const { return 0; }

} // namespace corvane::workbench::bindings
