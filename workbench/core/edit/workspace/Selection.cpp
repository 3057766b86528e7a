#include "workbench/core/edit/workspace/Selection.hpp"

#include <algorithm>

namespace corvane::workbench::core {

namespace {

using model::Element;

/// Elements by address, to be asked for many.
class ElementSet {
public:
    explicit ElementSet(std::span<Element* const> elements)
        : elements_(elements.begin(), elements.end()), used_(elements.size()) {
        std::ranges::sort(elements_);
    }

    [[nodiscard]] bool contains(const Element* element) const {
        return std::ranges::binary_search(elements_, element);
    }

    /// True the first time that an element is asked for.
    bool useFirst(const Element* element) {
        const auto found = std::ranges::lower_bound(elements_, element);
        const auto index = static_cast<std::size_t>(found - elements_.begin());
        const bool first = !used_[index];
        used_[index] = true;
        return first;
    }

private:
    std::vector<const Element*> elements_;
    std::vector<bool> used_;
};

bool standsBelow(const Element& element, const ElementSet& others) {
    for (const auto* above = element.parentElement(); above != nullptr;
         above = above->parentElement())
        if (others.contains(above))
            return true;
    return false;
}

Placement placementBelow(Element& parent, const ElementSet& elements) {
    std::vector<std::size_t> positions;
    const auto children = parent.childElements();
    for (std::size_t i = 0; i != children.size(); ++i)
        if (elements.contains(children[i].get()))
            positions.push_back(i);
    return {parent, std::move(positions)};
}

} // namespace

std::vector<Element*> topmostOf(std::span<Element* const> selection) {
    ElementSet all(selection);
    std::vector<Element*> topmost;
    topmost.reserve(selection.size());
    for (Element* const element : selection)
        if (all.useFirst(element) && !standsBelow(*element, all))
            topmost.push_back(element);
    return topmost;
}

std::vector<Placement> placementsOf(std::span<Element* const> topmost, host::Model& model) {
    std::vector<Element*> parents;
    parents.reserve(topmost.size());
    for (Element* const element : topmost)
        parents.push_back(&model.parentOf(*element));

    const ElementSet elements(topmost);
    ElementSet done(parents);
    std::vector<Placement> placements;
    for (Element* const parent : parents)
        if (done.useFirst(parent))
            placements.push_back(placementBelow(*parent, elements));
    return placements;
}

} // namespace corvane::workbench::core
