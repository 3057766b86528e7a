#include "workbench/core/edit/RemoveStep.hpp"

#include "workbench/core/edit/EditText.hpp"
#include "workbench/core/edit/Selection.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <ranges>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

std::u16string stepText(std::span<Element* const> elements) {
    if (elements.size() == 1)
        return editText("Remove “{}”", {utf8ToUtf16(elements.front()->name())});
    return editText("Remove {} elements",
                    {utf8ToUtf16(utils::numeric::detail::formatNumber(elements.size()).view())});
}

/// Walks what stays in the tree and picks the references to what goes.
class LossFinder {
public:
    LossFinder(std::span<const Placement> placements) {
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
    model::ReferenceLog targets_;
    std::vector<const Element*> targetElements_;
    std::vector<LostReference> losses_;
};

} // namespace

RemoveStep::RemoveStep(Workspace& workspace, std::span<Element* const> elements)
    : Step(stepText(elements)), placements_(placementsOf(elements, workspace.model().root())) {}

std::vector<LostReference> RemoveStep::losses(const Workspace& workspace) const {
    return LossFinder(placements_).find(workspace.model().root());
}

void RemoveStep::undo(Workspace& workspace) {
    bool regained = false;
    for (auto& placement : std::views::reverse(placements_))
        regained = placement.putBack(workspace) || regained;
    if (regained)
        workspace.validateReferences();
}

void RemoveStep::redo(Workspace& workspace) {
    bool lost = false;
    for (auto& placement : placements_)
        lost = placement.takeOut(workspace) || lost;
    if (lost)
        workspace.validateReferences();
}

} // namespace corvane::workbench::core
