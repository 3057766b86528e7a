#pragma once

#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace corvane::workbench::core {

using ElementList = std::span<const std::unique_ptr<model::Element>>;

/// To be called for each element of a walk: asks for the memory of those that come soon. A walk
/// over a large project does little with each element and would else spend a good part of its time
/// waiting for the next one.
inline void fetchAhead(ElementList elements, std::size_t index) {
    constexpr std::size_t kElement = 8; // so that it is there when it is asked for its other half
    constexpr std::size_t kSkillElement = 4;
    constexpr std::size_t kSkillElementLines = 3; // those of a skill element with some fields
    constexpr std::size_t kLine = 64;             // bytes
    if (index + kElement >= elements.size())
        return;
    __builtin_prefetch(elements[index + kElement].get());
    const auto* const skillElement = reinterpret_cast<const char*>(
        std::as_const(*elements[index + kSkillElement]).getSkillElement());
    for (std::size_t line = 0; line != kSkillElementLines; ++line)
        __builtin_prefetch(skillElement + line * kLine);
}

/// Visits the elements and everything below them, parents before children, in their order. `visit`
/// adds, removes and moves none of them.
void forEachElement(ElementList elements, function_ref<void(model::Element&)> visit);

/// How many elements that visits.
[[nodiscard]] std::size_t countElements(ElementList elements);

/// Brings loaded elements to life: configures all of them, then publishes each configured property
/// once, so that every error and every derived value stands before anyone looks.
void configureAndPublish(ElementList elements);

/// Validates every reference of the elements and of those below them again, after what they refer
/// to has come, gone or moved.
void validateReferences(ElementList elements);

} // namespace corvane::workbench::core
