#include <corvane/workbench/model/ReferenceLog.hpp>

#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/model/Model.hpp>

#include <algorithm>
#include <ranges>

namespace corvane::workbench::model {

void ReferenceLog::collect(Element& element) {
    for (auto* data = element.references_; data != nullptr; data = data->nextOfElement_)
        add(ElementReference(data), element);
    for (const auto& child : element.childElements())
        collect(*child);
}

void ReferenceLog::add(const ElementReference& reference, Element& element) {
    entries_.push_back({reference, &element, std::string(reference.text())});
}

void ReferenceLog::detach(Model& model) const {
    for (const auto& [reference, element, text] : entries_) {
        auto& data = *reference.data_;
        if (data.element_ != element)
            continue;
        element->removeReference(data);
        data.text_ = text;
        model.references().add(data);
    }
}

// Last noted, first given: an element's references come to stand in the order that they had.
void ReferenceLog::attach() const {
    for (const auto& [reference, element, text] : std::views::reverse(entries_)) {
        auto& data = *reference.data_;
        if (data.table_ != nullptr)
            data.table_->forget(data);
        if (data.element_ != nullptr)
            data.element_->removeReference(data);
        element->addReference(data);
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

} // namespace corvane::workbench::model
