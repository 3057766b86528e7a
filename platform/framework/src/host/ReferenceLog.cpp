#include <corvane/workbench/host/ReferenceLog.hpp>

#include <corvane/workbench/host/Model.hpp>
#include <corvane/workbench/model/Element.hpp>

#include "model/Internals.hpp"

#include <algorithm>
#include <ranges>

namespace corvane::workbench::host {

using model::Element;
using model::ElementReference;
using model::Internals;

void ReferenceLog::collect(Element& element) {
    for (auto* data = Internals::references(element); data != nullptr;
         data = Internals::next(*data))
        add(Internals::referTo(data), element);
    for (const auto& child : element.childElements())
        collect(*child);
}

void ReferenceLog::add(const ElementReference& reference, Element& element) {
    entries_.push_back({reference, &element, std::string(reference.text())});
}

void ReferenceLog::detach(Model& model) const {
    for (const auto& [reference, element, text] : entries_) {
        auto& data = *Internals::dataOf(reference);
        if (Internals::element(data) != element)
            continue;
        Internals::removeReference(*element, data);
        Internals::text(data) = text;
        model.references().add(data);
    }
}

// Last noted, first given: an element's references come to stand in the order that they had.
void ReferenceLog::attach() const {
    for (const auto& [reference, element, text] : std::views::reverse(entries_)) {
        auto& data = *Internals::dataOf(reference);
        if (auto* const keeper = Internals::keeper(data))
            keeper->forget(data);
        if (auto* const other = Internals::element(data))
            Internals::removeReference(*other, data);
        Internals::addReference(*element, data);
    }
}

std::vector<const Element*> ReferenceLog::elements() const {
    std::vector<const Element*> elements;
    elements.reserve(entries_.size());
    for (const auto& entry : entries_)
        elements.push_back(entry.element);
    std::ranges::sort(elements);
    const auto repeated = std::ranges::unique(elements);
    elements.erase(repeated.begin(), repeated.end());
    return elements;
}

} // namespace corvane::workbench::host
