#include "model/Internals.hpp"

#include <algorithm>
#include <stdexcept>

namespace corvane::workbench::model {

namespace {

/// How many levels there are below an element.
unsigned heightOf(const Element& element) {
    unsigned below = 0;
    for (const auto& child : element.childElements())
        below = std::max(below, heightOf(*child) + 1);
    return below;
}

} // namespace

Tree* Internals::tree(const Element& element) {
    const auto* root = &element;
    while (root->parent_ != nullptr)
        root = root->parent_;
    return root->tree_;
}

void Internals::requireRoom(unsigned depthOfParent, const Element& child) {
    if (depthOfParent + heightOf(child) >= Element::kMaxDepth)
        throw std::runtime_error("elements are nested too deeply");
}

ElementReference Internals::makeReference(Element& element) {
    if (element.references_ == nullptr)
        addReference(element, makeData(std::string()));
    return referTo(element.references_);
}

void Internals::addReference(Element& element, ElementReferenceData& data) {
    utils::thread::expectOwner();
    data.element_ = &element;
    data.textEpoch_ = 0;
    data.nextOfElement_ = std::exchange(element.references_, &data);
}

void Internals::removeReference(Element& element, ElementReferenceData& data) {
    utils::thread::expectOwner();
    auto** link = &element.references_;
    while (*link != &data)
        link = &(*link)->nextOfElement_;
    *link = std::exchange(data.nextOfElement_, nullptr);
    data.element_ = nullptr;
}

void Internals::letReferencesGo(Element& element) {
    for (auto* data = element.references_; data != nullptr;) {
        static_cast<void>(data->text()); // which brings the text that stays up to date
        data->element_ = nullptr;
        data = std::exchange(data->nextOfElement_, nullptr);
    }
}

} // namespace corvane::workbench::model
