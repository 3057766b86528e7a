#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/workbench/host/ReferenceTable.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <string_view>

namespace corvane::workbench::host {

/// The tree of a project, with the references that wait for elements of it. It belongs to the
/// thread that owns the model, and its elements go with it, before the references that wait.
class CORVANE_EXPORT Model final : public model::Tree {
public:
    Model();
    ~Model();

    /// The nameless element above those at the top; it has no skill element.
    [[nodiscard]] model::Element& root() { return root_; }
    [[nodiscard]] const model::Element& root() const { return root_; }

    /// What an element of this tree stands below: its parent, or the root for one at the top.
    [[nodiscard]] model::Element& parentOf(model::Element& element) {
        return parentOr(root_, element);
    }
    [[nodiscard]] const model::Element& parentOf(const model::Element& element) const {
        return parentOr(root_, element);
    }

    /// The element with this path ("/PLC/Data/speed", names escaped); null if there is none. "/"
    /// names an element without a name, which no tree has, and not the root.
    [[nodiscard]] model::Element* findElement(std::string_view path) const;

    /// The references that wait for elements of this tree: those whose text names nothing yet.
    /// A reference that has its element is not among them.
    [[nodiscard]] ReferenceTable& references() { return references_; }

    /// Gives waiting references their elements; true if any was resolved. Those that were are noted
    /// in `found` where there is one.
    bool resolveReferences(ReferenceLog* found = nullptr);

    /// To be called by whoever changes a name or a place.
    using Tree::notePathChange;

private:
    template <class E>
    static E& parentOr(E& root, E& element) {
        auto* const parent = element.parentElement();
        return parent == nullptr ? root : *parent;
    }

    ReferenceTable references_;
    model::Element root_;
};

/// The tree that an element stands in; null if it stands in none.
[[nodiscard]] CORVANE_EXPORT Model* modelOf(const model::Element& element);

} // namespace corvane::workbench::host
