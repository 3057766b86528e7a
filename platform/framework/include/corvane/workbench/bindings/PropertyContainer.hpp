#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/function_ref.hpp>

#include <cstddef>

namespace corvane::workbench::model {
class ElementReference;
}

namespace corvane::workbench::bindings {

/// Something with properties, possibly with further containers below it. The order of the virtual
/// operations is part of the plug-in boundary. Elements are containers by way of
/// PropertyController: a plug-in seldom has anything to override here.
class CORVANE_EXPORT PropertyContainer {
public:
    virtual ~PropertyContainer();

    /// Called after the number of this container's property errors has changed, by one or by many.
    /// Does nothing by default.
    virtual void propertyErrorCountChanged();

    /// Visits the containers directly below this one; by default there are none.
    virtual void forEachSubPropertyContainer(function_ref<void(PropertyContainer&)> visit);

    /// Visits the references to other elements that this container's own properties hold, empty
    /// ones and those whose elements are missing too; by default there are none.
    virtual void
    forEachLocalCrossReference(function_ref<void(const model::ElementReference&)> visit) const;

    /// The number of errors of this container's own properties, without those below it.
    [[nodiscard]] virtual std::size_t localPropertyErrorCount() const;

protected:
    PropertyContainer() = default;
    PropertyContainer(const PropertyContainer&) = default;
    PropertyContainer& operator=(const PropertyContainer&) = default;
};

} // namespace corvane::workbench::bindings
