#pragma once

#include "workbench/core/edit/Findings.hpp"
#include "workbench/core/edit/Placement.hpp"
#include "workbench/core/edit/Step.hpp"

namespace corvane::workbench::core {

/// An import, with what it replaced kept.
class ImportStep final : public Step {
public:
    /// Merges what is staged below `target`. What is thrown leaves the project as it was.
    ImportStep(Workspace& workspace, model::Element& target, StagedImport& staged);

    [[nodiscard]] const ImportOutcome& outcome() const { return outcome_; }
    [[nodiscard]] const ImportChanges& changes() const { return changes_; }

    /// Whether the document brought nothing.
    [[nodiscard]] bool isNothing() const { return outcome_.top.empty(); }

    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    void merge(Workspace& workspace, StagedImport& staged);
    void prepareWayBack();
    void takeBack(Workspace& workspace);
    void makeAgain(Workspace& workspace);
    void exchangeSkillElements();

    model::Element* target_;
    ImportOutcome outcome_;
    ImportChanges changes_;
    Findings findings_;
    std::vector<Placement> placements_; // of what was appended
};

} // namespace corvane::workbench::core
