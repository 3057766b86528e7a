#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"
#include "workbench/core/edit/workspace/Placement.hpp"
#include "workbench/core/import/ImportCounts.hpp"
#include "workbench/core/import/ProjectImport.hpp"

namespace corvane::workbench::core {

/// An import, with what it replaced kept.
class ImportStep final : public Step {
public:
    /// What is staged shall come to stand below `target`. It must live until the step is performed.
    ImportStep(model::Element& target, StagedImport& staged);

    /// What the import did, once the step is performed.
    [[nodiscard]] const ImportOutcome& outcome() const { return outcome_; }
    [[nodiscard]] const ImportCounts& counts() const { return counts_; }

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    void merge(Workspace& workspace);
    void prepareWayBack();
    void takeBack(Workspace& workspace);
    void makeAgain(Workspace& workspace);
    void exchangeSkillElements();

    model::Element* target_;
    StagedImport* staged_; // null once it is merged
    ImportOutcome outcome_;
    ImportCounts counts_;
    ImportChanges changes_;
    Findings findings_;
    std::vector<Placement> placements_; // of what was appended
};

} // namespace corvane::workbench::core
