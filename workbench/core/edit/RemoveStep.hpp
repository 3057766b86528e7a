#pragma once

#include "workbench/core/edit/Placement.hpp"
#include "workbench/core/edit/Step.hpp"

namespace corvane::workbench::core {

/// Elements that are taken out, with what is below them.
class RemoveStep final : public Step {
public:
    /// `elements` do not stand below each other, and are at least one. `redo` is still to be
    /// called.
    RemoveStep(Workspace& workspace, std::span<model::Element* const> elements);

    /// The references elsewhere that lose their elements by the step, which has not been done yet.
    [[nodiscard]] std::vector<LostReference> losses(const Workspace& workspace) const;

    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    std::vector<Placement> placements_;
};

} // namespace corvane::workbench::core
