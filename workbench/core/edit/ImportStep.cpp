#include "workbench/core/edit/ImportStep.hpp"

#include "workbench/core/edit/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <ranges>

namespace corvane::workbench::core {

namespace {

using Renamings = std::vector<ImportChanges::Renaming>;

// Names may have been exchanged, so all are given up before any is taken.
void rename(const Renamings& renamings, std::string ImportChanges::Renaming::* name) {
    for (const auto& renaming : renamings)
        renaming.element->rename("\x01" + renaming.element->name());
    for (const auto& renaming : renamings)
        renaming.element->rename(renaming.*name);
}

} // namespace

ImportStep::ImportStep(Workspace& workspace, model::Element& target, StagedImport& staged)
    : Step(editText("Import into “{}”", {utils::string::detail::utf8ToUtf16(target.name())})),
      target_(&target) {
    workspace.reset(target, [&] { merge(workspace, staged); });
}

void ImportStep::merge(Workspace& workspace, StagedImport& staged) {
    try {
        outcome_ = staged.merge(&changes_);
        prepareWayBack();
    } catch (...) {
        prepareWayBack();
        takeBack(workspace);
        throw;
    }
}

void ImportStep::prepareWayBack() {
    findings_ = Findings(std::move(changes_.found));
    for (const auto& [parent, first, count] : changes_.appendings) {
        std::vector<std::size_t> positions;
        positions.reserve(count);
        while (positions.size() != count)
            positions.push_back(first + positions.size());
        placements_.emplace_back(*parent, std::move(positions));
    }
}

void ImportStep::undo(Workspace& workspace) {
    workspace.reset(*target_, [&] { takeBack(workspace); });
}

void ImportStep::redo(Workspace& workspace) {
    workspace.reset(*target_, [&] { makeAgain(workspace); });
}

void ImportStep::takeBack(Workspace& workspace) {
    bool changed = findings_.takeBack(workspace);
    for (auto& placement : std::views::reverse(placements_))
        changed = placement.takeOut(workspace) || changed;
    rename(changes_.renamings, &ImportChanges::Renaming::before);
    exchangeSkillElements();
    if (changed)
        workspace.validateReferences();
}

void ImportStep::makeAgain(Workspace& workspace) {
    exchangeSkillElements();
    rename(changes_.renamings, &ImportChanges::Renaming::after);
    bool changed = false;
    for (auto& placement : placements_)
        changed = placement.putBack(workspace) || changed;
    if (findings_.make(workspace) || changed)
        workspace.validateReferences();
}

void ImportStep::exchangeSkillElements() {
    for (auto& replacement : changes_.replacements)
        replacement.element->swapSkillElement(replacement.replaced);
}

} // namespace corvane::workbench::core
