#pragma once

#include "workbench/core/edit/workspace/Workspace.hpp"
#include "workbench/core/import/ImportMerge.hpp"

namespace corvane::workbench::core {

/// Children of one parent that a step takes out of the tree and puts back where they were. While
/// they are out, references to them wait.
class Placement {
public:
    /// The children at `positions`, which ascend. They are in the tree.
    Placement(model::Element& parent, std::vector<std::size_t> positions)
        : parent_(&parent), positions_(std::move(positions)) {}

    /// Children that are out already.
    explicit Placement(ImportChanges::Removal removal)
        : parent_(removal.parent),
          positions_(std::move(removal.positions)),
          children_(std::move(removal.elements)),
          lost_(std::move(removal.lost)) {}

    [[nodiscard]] model::Element& parent() const { return *parent_; }
    [[nodiscard]] const std::vector<std::size_t>& positions() const { return positions_; }

    /// Takes the children out, of which the observer learns; true if references have lost their
    /// elements.
    bool takeOut(Workspace& workspace);

    /// Puts them back in, when their parent's other children are those that were left; true if
    /// references have got their elements back.
    bool putBack(Workspace& workspace);

private:
    model::Element* parent_;
    std::vector<std::size_t> positions_;
    std::vector<std::unique_ptr<model::Element>> children_; // while they are out
    host::ReferenceLog lost_;
};

} // namespace corvane::workbench::core
