#pragma once

#include <corvane/workbench/FunctionRef.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <memory>
#include <span>

namespace corvane::workbench::core {

using ElementList = std::span<const std::unique_ptr<model::Element>>;

/// Visits the elements and everything below them, parents before children, in their order.
void forEachElement(ElementList elements, FunctionRef<void(model::Element&)> visit);

/// How many elements that visits.
[[nodiscard]] std::size_t countElements(ElementList elements);

/// Brings loaded elements to life: configures all of them, then publishes each configured property
/// once, so that every error and every derived value stands before anyone looks.
void configureAndPublish(ElementList elements);

/// Validates every reference again, after what they refer to has come, gone or moved.
void validateReferences(ElementList elements);

} // namespace corvane::workbench::core
