#include "workbench/core/edit/steps/MoveStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/edit/workspace/Selection.hpp"
#include "workbench/core/edit/workspace/StagedMove.hpp"

#include <corvane/workbench/host/Tree.hpp>

#include <algorithm>
#include <optional>
#include <ranges>

namespace corvane::workbench::core {

namespace {

using model::Element;
using Elements = std::vector<std::unique_ptr<Element>>;

/// Elements that are out of the tree for the moment, to be had in any order.
class Loose {
public:
    void add(Elements elements) {
        for (auto& element : elements)
            entries_.emplace_back(element.get(), std::move(element));
    }

    /// The elements in the order of `wanted`, which has all of them or some of one parent.
    [[nodiscard]] Elements get(std::span<Element* const> wanted) {
        if (!sorted_)
            std::ranges::sort(entries_, {}, &Entry::first);
        sorted_ = true;
        Elements elements;
        elements.reserve(wanted.size());
        for (Element* const element : wanted)
            elements.push_back(
                std::move(std::ranges::lower_bound(entries_, element, {}, &Entry::first)->second));
        return elements;
    }

private:
    using Entry = std::pair<Element*, std::unique_ptr<Element>>;
    std::vector<Entry> entries_;
    bool sorted_ = false;
};

bool isReferencedWithin(Element& element) {
    if (host::isReferenced(element))
        return true;
    return std::ranges::any_of(element.childElements(),
                               [](const auto& child) { return isReferencedWithin(*child); });
}

std::vector<Element*> elementsAt(const Placement& placement) {
    std::vector<Element*> elements;
    elements.reserve(placement.positions().size());
    for (const auto position : placement.positions())
        elements.push_back(placement.parent().childElements()[position].get());
    return elements;
}

} // namespace

MoveStep::MoveStep(std::span<Element* const> elements, host::Model& model, Element& parent,
                   std::size_t position)
    : Step(countedEditText("Move “{}”", "Move {} elements", elements)),
      moved_(elements.begin(), elements.end()),
      parent_(&parent),
      positions_(elements.size()) {
    for (const Element* const element : elements)
        names_.push_back(element->name());
    for (const auto& placement : placementsOf(elements, model)) {
        sources_.push_back({&placement.parent(), placement.positions(), elementsAt(placement)});
        if (&placement.parent() == &parent) // those in front of the new place make room first
            position -=
                static_cast<std::size_t>(std::ranges::lower_bound(placement.positions(), position) -
                                         placement.positions().begin());
    }
    std::ranges::copy(std::views::iota(position, position + positions_.size()), positions_.begin());
}

// Whether the elements stand where they shall already.
bool MoveStep::isNothing() const {
    return sources_.size() == 1 && sources_.front().parent == parent_ &&
           sources_.front().positions == positions_ && sources_.front().elements == moved_;
}

bool MoveStep::perform(Workspace& workspace) {
    if (isNothing())
        return false;
    std::vector<Element*> relocated;
    for (Element* const element : moved_)
        if (&workspace.model().parentOf(*element) != parent_)
            relocated.push_back(element);
    referenced_ = std::ranges::any_of(
        relocated, [](Element* element) { return isReferencedWithin(*element); });

    std::optional<StagedMove> staged;
    if (!relocated.empty())
        staged.emplace(workspace.project(), relocated, *parent_);
    moveThere(workspace, [&] {
        if (staged)
            others_ = staged->adopt();
        staged.reset();
    });
    return true;
}

void MoveStep::redo(Workspace& workspace) {
    moveThere(workspace, [&] { exchangeSkillElements(); });
}

void MoveStep::moveThere(Workspace& workspace, function_ref<void()> exchange) {
    Loose loose;
    for (const auto& source : sources_)
        loose.add(workspace.take(*source.parent, source.positions));
    exchange();
    workspace.put(*parent_, loose.get(moved_), positions_);
    if (findings_.make(workspace) || referenced_)
        workspace.validateReferences();
}

void MoveStep::undo(Workspace& workspace) {
    const bool found = findings_.takeBack(workspace);
    Loose loose;
    loose.add(workspace.take(*parent_, positions_));
    exchangeSkillElements();
    for (std::size_t i = 0; i != moved_.size(); ++i)
        host::rename(*moved_[i], names_[i]);
    for (const auto& source : sources_)
        workspace.put(*source.parent, loose.get(source.elements), source.positions);
    if (found || referenced_)
        workspace.validateReferences();
}

void MoveStep::exchangeSkillElements() {
    for (auto& [element, other] : others_)
        host::swapSkillElement(*element, other);
}

} // namespace corvane::workbench::core
