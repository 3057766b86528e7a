#pragma once

#include "workbench/core/edit/steps/Step.hpp"

#include <memory>
#include <vector>

namespace corvane::workbench::core {

/// Steps that were performed one after the other, and are undone and redone together.
class StepGroup final : public Step {
public:
    /// Without a text the group has that of its first step.
    explicit StepGroup(std::u16string text) : Step(std::move(text)) {}

    /// Takes a step that has just been performed.
    void add(std::shared_ptr<Step> step);

    /// The steps have been performed already; false where there are none.
    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    void tell(const Workspace& workspace, std::size_t done) const;

    std::vector<std::shared_ptr<Step>> steps_;
};

} // namespace corvane::workbench::core
