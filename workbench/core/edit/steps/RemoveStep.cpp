#include "workbench/core/edit/steps/RemoveStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/edit/workspace/Selection.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>
#include <corvane/utils/string/Utf.hpp>

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

} // namespace

RemoveStep::RemoveStep(std::span<Element* const> elements, host::Model& model)
    : Step(stepText(elements)), placements_(placementsOf(elements, model)) {}

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
