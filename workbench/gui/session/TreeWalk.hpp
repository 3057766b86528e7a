#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <memory>
#include <span>
#include <vector>

namespace corvane::workbench::gui {

/// Visits everything below an element, parents before children, one element per call, so that the
/// walk can rest between events. It ends with the first change of the tree: begin another then.
class TreeWalk {
public:
    explicit TreeWalk(const model::Element& above) { enter(above); }

    /// The next element; null at the end.
    [[nodiscard]] model::Element* next() {
        while (!levels_.empty()) {
            auto& rest = levels_.back();
            if (rest.empty()) {
                levels_.pop_back();
                continue;
            }
            auto* const element = rest.front().get();
            rest = rest.subspan(1);
            enter(*element);
            return element;
        }
        return nullptr;
    }

private:
    using Rest = std::span<const std::unique_ptr<model::Element>>;

    void enter(const model::Element& element) {
        if (const auto children = element.childElements(); !children.empty())
            levels_.push_back(children);
    }

    std::vector<Rest> levels_; // what is left to visit, innermost last
};

} // namespace corvane::workbench::gui
