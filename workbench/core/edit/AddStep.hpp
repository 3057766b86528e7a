#pragma once

#include "workbench/core/edit/Findings.hpp"
#include "workbench/core/edit/Placement.hpp"
#include "workbench/core/edit/Step.hpp"

namespace corvane::workbench::core {

/// A new element.
class AddStep final : public Step {
public:
    /// Adds the element behind its parent's last child. Throws EditError.
    AddStep(Workspace& workspace, model::Element& parent, const LoadedClass& elementClass,
            std::string_view name);

    [[nodiscard]] model::Element& element() const { return *element_; }

    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    Placement placement_;
    model::Element* element_ = nullptr;
    Findings findings_;
};

} // namespace corvane::workbench::core
