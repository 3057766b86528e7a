#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"

namespace corvane::workbench::core {

/// Another name for an element. References to it follow; those that waited for the new path find
/// it.
class RenameStep final : public Step {
public:
    /// `name` is another than the element's, and free among its siblings.
    RenameStep(model::Element& element, std::string_view name);

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    model::Element* element_;
    std::string before_;
    std::string after_;
    Findings findings_;
};

} // namespace corvane::workbench::core
