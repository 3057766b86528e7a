#pragma once

#include "workbench/core/project/ElementWalk.hpp"

#include <string>
#include <vector>

namespace corvane::workbench::core {

/// A property that its element's validator objects to; texts are translated.
struct PropertyError {
    model::Element* element;
    std::u16string field; // the label of its control in the element's form; empty without one
    std::u16string message;
};

/// Every property error of the elements and of those below them, in their order; those of one
/// element in the order in which it declares its properties.
[[nodiscard]] std::vector<PropertyError> propertyErrors(ElementList elements);

} // namespace corvane::workbench::core
