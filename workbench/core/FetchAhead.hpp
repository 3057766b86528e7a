#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace corvane::workbench::core {

/// To be called for each element of a walk: asks for the memory of those that come soon. A walk
/// over a large project does little with each element and would else spend a good part of its time
/// waiting for the next one.
inline void fetchAhead(std::span<const std::unique_ptr<model::Element>> elements,
                       std::size_t index) {
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

} // namespace corvane::workbench::core
