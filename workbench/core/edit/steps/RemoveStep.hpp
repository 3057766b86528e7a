#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/LostReferences.hpp"
#include "workbench/core/edit/workspace/Placement.hpp"

#include <span>
#include <vector>

namespace corvane::workbench::core {

/// Elements that are taken out, with what is below them. They live on in the step; references to
/// them wait until they are back.
class RemoveStep final : public Step {
public:
    /// `elements` stand in `model`, not below each other, and are at least one.
    RemoveStep(std::span<model::Element* const> elements, host::Model& model);

    /// The references elsewhere that lose their elements by the step, which is still to be
    /// performed.
    [[nodiscard]] std::vector<LostReference> losses(const host::Model& model) const {
        return lostReferences(placements_, model.root());
    }

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    std::vector<Placement> placements_;
};

} // namespace corvane::workbench::core
