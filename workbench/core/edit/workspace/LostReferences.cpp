#include "workbench/core/edit/workspace/LostReferences.hpp"

#include <algorithm>

namespace corvane::workbench::core {

namespace {

using model::Element;

/// Walks what stays in the tree and picks the references to what goes.
class LossFinder {
public:
    explicit LossFinder(std::span<const Placement> placements) {
        for (const auto& placement : placements)
            for (const auto position : placement.positions()) {
                Element& element = *placement.parent().childElements()[position];
                going_.push_back(&element);
                targets_.collect(element);
            }
        std::ranges::sort(going_);
    }

    std::vector<LostReference> find(const Element& root) {
        if (targets_.empty())
            return {};
        targetElements_ = targets_.elements();
        visit(root);
        return std::move(losses_);
    }

private:
    // As deep as elements nest, which the tree bounds.
    void visit(const Element& parent) {
        for (const auto& child : parent.childElements()) {
            if (std::ranges::binary_search(going_, child.get()))
                continue;
            child->getSkillElement()->forEachLocalCrossReference(
                [&](const model::ElementReference& reference) { look(*child, reference); });
            visit(*child);
        }
    }

    void look(Element& holder, const model::ElementReference& reference) {
        const Element* const target = reference.elementOrNull();
        if (target != nullptr && std::ranges::binary_search(targetElements_, target))
            losses_.push_back({&holder, std::string(reference.text())});
    }

    std::vector<const Element*> going_;
    host::ReferenceLog targets_;
    std::vector<const Element*> targetElements_;
    std::vector<LostReference> losses_;
};

} // namespace

std::vector<LostReference> lostReferences(std::span<const Placement> placements,
                                          const Element& root) {
    return LossFinder(placements).find(root);
}

} // namespace corvane::workbench::core
