#include "workbench/core/edit/steps/RemoveStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/edit/workspace/Selection.hpp"

#include <ranges>

namespace corvane::workbench::core {

namespace {

using model::Element;

} // namespace

RemoveStep::RemoveStep(std::span<Element* const> elements, host::Model& model)
    : Step(countedEditText("Remove “{}”", "Remove {} elements", elements)),
      placements_(placementsOf(elements, model)) {}

bool RemoveStep::perform(Workspace& workspace) {
    redo(workspace);
    return true;
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
