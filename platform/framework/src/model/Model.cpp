#include <corvane/workbench/model/Model.hpp>

namespace corvane::workbench::model {

Model::Model() : root_(this) {}

Model::~Model() = default;

Element* Model::findElement(std::string_view path) const {
    if (!path.starts_with('/'))
        return nullptr;
    const Element* element = &root_;
    while (!path.empty()) {
        path.remove_prefix(1);
        const auto name = path.substr(0, path.find('/'));
        element = element->findChild(unescapeName(name));
        if (element == nullptr)
            return nullptr;
        path.remove_prefix(name.size());
    }
    return const_cast<Element*>(element);
}

bool Model::resolveReferences(ReferenceLog* found) {
    return references_.resolve([this](std::string_view text) { return findElement(text); }, found);
}

} // namespace corvane::workbench::model
