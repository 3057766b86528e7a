#pragma once

#include "workbench/core/edit/Findings.hpp"
#include "workbench/core/edit/Step.hpp"

namespace corvane::workbench::core {

/// Another name for an element.
class RenameStep final : public Step {
public:
    /// `name` is free among the siblings. `redo` is still to be called.
    RenameStep(model::Element& element, std::string_view name);

    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    model::Element* element_;
    std::string before_;
    std::string after_;
    Findings findings_;
};

} // namespace corvane::workbench::core
