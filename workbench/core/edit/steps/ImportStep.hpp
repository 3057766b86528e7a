#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"
#include "workbench/core/edit/workspace/Placement.hpp"
#include "workbench/core/edit/workspace/StagedMove.hpp"
#include "workbench/core/import/ImportPreview.hpp"
#include "workbench/core/import/ProjectImport.hpp"

#include <corvane/workbench/function_ref.hpp>

namespace corvane::workbench::core {

/// The parts of a preview, by which its progress is told: reading, merging, writing down, and
/// taking back. After which of them the second and the third begin:
inline constexpr std::size_t kPreviewParts = 4;
inline constexpr std::size_t kPreviewRead = 1;
inline constexpr std::size_t kPreviewMerged = 2;

/// An import, with what it replaced kept.
class ImportStep final : public Step {
public:
    /// What is staged shall come to stand below `target`. It must live until the step is performed.
    ImportStep(model::Element& target, StagedImport& staged, const ImportOptions& options);

    /// What the import did, once the step is performed.
    [[nodiscard]] const ImportOutcome& outcome() const { return outcome_; }
    [[nodiscard]] const ImportCounts& counts() const { return counts_; }
    [[nodiscard]] const std::vector<MergeWarning>& warnings() const { return warnings_; }

    /// Instead of performing it: what it would do. The project is as it was then.
    [[nodiscard]] ImportPreview preview(Workspace& workspace);

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    /// Merges and lets `look` see what came of it.
    void merge(Workspace& workspace, function_ref<void()> look);
    void renewKept(Workspace& workspace);
    void prepareWayBack();
    void takeBack(Workspace& workspace);
    void makeAgain(Workspace& workspace);
    void exchangeSkillElements();

    model::Element* target_;
    StagedImport* staged_; // null once it is merged
    ImportOptions options_;
    ImportOutcome outcome_;
    ImportCounts counts_;
    std::vector<MergeWarning> warnings_;
    ImportChanges changes_;
    StagedMove::Replaced renewed_; // the other halves of what was kept below something moved
    Findings findings_;
    std::vector<Placement> placements_; // of what was appended, when the removed is out
    std::vector<Placement> removals_;   // of what was removed, while the appended is out
};

} // namespace corvane::workbench::core
