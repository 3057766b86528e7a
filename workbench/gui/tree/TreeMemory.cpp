#include "workbench/gui/tree/TreeMemory.hpp"

#include "workbench/core/project/ElementWalk.hpp"

#include <algorithm>
#include <utility>

namespace corvane::workbench::gui {

using Way = ProjectSession::Way;

TreeMemory::TreeMemory(ProjectSession& session, TreeModel& model, QTreeView& view)
    : QObject(&view), session_(&session), model_(&model), view_(&view) {
    connect(view_, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { note(index, true); });
    connect(view_, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { note(index, false); });
    connectToSession();
}

void TreeMemory::connectToSession() {
    connect(session_, &ProjectSession::insertionEnds, this, &TreeMemory::restoreExpanded);
    connect(session_, &ProjectSession::stepBegins, this, &TreeMemory::beginStep);
    connect(session_, &ProjectSession::stepEnded, this, &TreeMemory::endStep);
}

// A filter expands what it finds.
void TreeMemory::note(const QModelIndex& index, bool expanded) {
    if (model_->isFiltered())
        return;
    const auto* const element = &model_->elementAt(index);
    if (expanded)
        expanded_.insert(element);
    else
        expanded_.erase(element);
}

void TreeMemory::forget() {
    expanded_.clear();
    steps_.clear();
    before_ = {};
    place_ = {};
}

TreeMemory::Selection TreeMemory::selection() const {
    Selection selection;
    for (const auto& index : view_->selectionModel()->selectedRows())
        selection.elements.push_back(&model_->elementAt(index));
    if (const auto index = view_->currentIndex(); index.isValid())
        selection.current = &model_->elementAt(index);
    return selection;
}

void TreeMemory::restoreExpanded() {
    if (!model_->isFiltered())
        restoreBelow(session_->root());
}

void TreeMemory::restoreBelow(const model::Element& parent) {
    for (const auto& child : parent.childElements()) {
        if (!expanded_.contains(child.get()))
            continue;
        const auto index = model_->indexOf(*child);
        if (index.isValid() && !view_->isExpanded(index))
            view_->expand(index);
        restoreBelow(*child);
    }
}

// The view tells of single elements only. Without children there is nothing to remember.
void TreeMemory::expandAll() {
    if (!model_->isFiltered())
        core::forEachElement(session_->root().childElements(), [this](model::Element& element) {
            if (!element.childElements().empty())
                expanded_.insert(&element);
        });
    view_->expandAll();
}

void TreeMemory::collapseAll() {
    if (!model_->isFiltered())
        expanded_.clear();
    view_->collapseAll();
}

TreeMemory::Place TreeMemory::placeOf(model::Element& element) const {
    auto& parent = model_->parentOf(element);
    const auto children = parent.childElements();
    const auto found = std::ranges::find(children, &element, &std::unique_ptr<model::Element>::get);
    return {&parent, static_cast<std::size_t>(found - children.begin())};
}

void TreeMemory::beginStep(Way way, bool ofTree) {
    const auto depth = session_->editor().stepsDone();
    step_ = way == Way::back ? depth - 1 : depth;
    before_ = selection();
    place_ = before_.current != nullptr ? placeOf(*before_.current) : Place();
    if (way == Way::forth) {
        steps_.resize(step_);
        steps_.emplace_back(ofTree ? std::optional(Sides{before_, {}}) : std::nullopt);
    } else if (step_ < steps_.size() && steps_[step_]) {
        (way == Way::back ? steps_[step_]->after : steps_[step_]->before) = before_;
    }
}

void TreeMemory::endStep(Way way, bool good) {
    if (!good)
        return;
    const bool isKnown = step_ < steps_.size() && steps_[step_];
    if (way != Way::forth && isKnown)
        emit wanted(way == Way::back ? steps_[step_]->before : steps_[step_]->after);
    else if (before_.current != nullptr && before_.current->tree() != &session_->project().model())
        takeNeighbour();
}

// What stands now where the current element stood, or the last one before it, or what is above.
void TreeMemory::takeNeighbour() {
    auto* neighbour = place_.parent;
    if (neighbour->tree() != &session_->project().model())
        return;
    if (const auto siblings = neighbour->childElements(); !siblings.empty())
        neighbour = siblings[std::min(place_.position, siblings.size() - 1)].get();
    if (neighbour != &session_->root())
        emit wanted({{neighbour}, neighbour});
}

} // namespace corvane::workbench::gui
