#include <corvane/workbench/host/Model.hpp>

#include "model/Internals.hpp"

namespace corvane::workbench::host {

using model::Element;
using model::Internals;

Model::Model() : root_(Internals::makeRoot(this)) {}

Model::~Model() = default;

Element* Model::findElement(std::string_view path) const {
    if (!path.starts_with('/'))
        return nullptr;
    const Element* element = &root_;
    while (!path.empty()) {
        path.remove_prefix(1);
        const auto name = path.substr(0, path.find('/'));
        element = element->findChild(model::unescapeName(name));
        if (element == nullptr)
            return nullptr;
        path.remove_prefix(name.size());
    }
    return const_cast<Element*>(element);
}

bool Model::resolveReferences(ReferenceLog* found) {
    return references_.resolve([this](std::string_view text) { return findElement(text); }, found);
}

// No other class is a tree.
Model* modelOf(const Element& element) { return static_cast<Model*>(Internals::tree(element)); }

} // namespace corvane::workbench::host
