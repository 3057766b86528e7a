#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"
#include "workbench/core/edit/workspace/Placement.hpp"

#include <span>
#include <unordered_map>
#include <vector>

namespace corvane::workbench::core {

/// Copies of elements, with all that is below them, each behind its original. What a copy refers to
/// is what the original refers to, or the copy of that where it was copied along.
class DuplicateStep final : public Step {
public:
    /// `elements` stand in the tree, not below each other, and are at least one.
    explicit DuplicateStep(std::span<model::Element* const> elements);

    /// The copies, once the step is performed, in the order of their originals.
    [[nodiscard]] const std::vector<model::Element*>& copies() const { return copies_; }

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    std::unique_ptr<model::Element> copyOf(const model::Element& original);
    void putBehind(Workspace& workspace, model::Element& original);
    void leadToCopies(std::span<const std::unique_ptr<model::Element>> elements) const;
    void takeOut(Workspace& workspace);

    std::vector<model::Element*> originals_; // until the step is performed
    std::vector<model::Element*> copies_;
    std::unordered_map<const model::Element*, model::Element*> copyOf_; // while it is performed
    std::vector<Placement> placements_;
    Findings findings_;
};

} // namespace corvane::workbench::core
