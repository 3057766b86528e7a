#include "workbench/core/edit/steps/DuplicateStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <algorithm>
#include <array>
#include <ranges>
#include <utility>

namespace corvane::workbench::core {

namespace {

using model::Element;

std::size_t positionOf(const Element& element, const Element& parent) {
    const auto found =
        std::ranges::find(parent.childElements(), &element, &std::unique_ptr<Element>::get);
    return static_cast<std::size_t>(found - parent.childElements().begin());
}

} // namespace

DuplicateStep::DuplicateStep(std::span<Element* const> elements)
    : Step(countedEditText("Duplicate “{}”", "Duplicate {} elements", elements)),
      originals_(elements.begin(), elements.end()) {}

bool DuplicateStep::perform(Workspace& workspace) {
    try {
        for (Element* const original : std::exchange(originals_, {}))
            putBehind(workspace, *original);
    } catch (...) {
        takeOut(workspace);
        throw;
    }
    copyOf_.clear();
    if (findings_.make(workspace))
        workspace.validateReferences();
    return true;
}

std::unique_ptr<Element> DuplicateStep::copyOf(const Element& original) {
    const auto& elementClass = original.elementClass();
    auto copy = std::make_unique<Element>(
        elementClass, elementClass.factory().cloneElement(*original.getSkillElement()));
    for (const auto& child : original.childElements())
        host::appendChild(*copy, copyOf(*child), child->name());
    copyOf_.emplace(&original, copy.get());
    return copy;
}

void DuplicateStep::putBehind(Workspace& workspace, Element& original) {
    auto& parent = workspace.model().parentOf(original);
    const std::array position{positionOf(original, parent) + 1};
    std::vector<std::unique_ptr<Element>> added;
    added.push_back(copyOf(original));
    host::rename(*added.front(), original.name());
    copies_.push_back(added.front().get());
    workspace.tell([&](auto& observer) { observer.aboutToInsert(parent, position.front(), 1); });
    host::putChildren(parent, std::move(added), position);
    placements_.emplace_back(parent, std::vector(position.begin(), position.end()));
    const auto copy = parent.childElements().subspan(position.front(), 1);
    try {
        configureAndPublish(copy);
        leadToCopies(copy);
    } catch (...) {
        workspace.tell([](auto& observer) { observer.inserted(); });
        throw;
    }
    workspace.tell([](auto& observer) { observer.inserted(); });
}

// Only a form knows which of an element's fields are references.
void DuplicateStep::leadToCopies(ElementList elements) const {
    FormSeries forms;
    forEachElement(elements, [&](Element& element) {
        for (ui::Control* const control : forms.of(element).controls()) {
            const auto value = control->storedValue();
            const auto* const reference = std::get_if<model::ElementReference>(&value);
            if (reference == nullptr)
                continue;
            if (const auto copy = copyOf_.find(reference->elementOrNull()); copy != copyOf_.end())
                control->restoreValue(copy->second->makeReference());
        }
    });
}

void DuplicateStep::takeOut(Workspace& workspace) {
    bool lost = false;
    for (auto& placement : std::views::reverse(placements_))
        lost = placement.takeOut(workspace) || lost;
    if (lost)
        workspace.validateReferences();
}

void DuplicateStep::undo(Workspace& workspace) {
    const bool found = findings_.takeBack(workspace);
    takeOut(workspace);
    if (found)
        workspace.validateReferences();
}

void DuplicateStep::redo(Workspace& workspace) {
    bool regained = false;
    for (auto& placement : placements_)
        regained = placement.putBack(workspace) || regained;
    const bool found = findings_.make(workspace);
    if (regained || found)
        workspace.validateReferences();
}

} // namespace corvane::workbench::core
