#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"
#include "workbench/core/edit/workspace/Placement.hpp"

#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// A new element.
class AddStep final : public Step {
public:
    /// The element shall stand behind its parent's last child, which accepts the class. Its name is
    /// the class's own where `name` is empty, and made unique.
    AddStep(model::Element& parent, const LoadedClass& elementClass, std::string_view name);

    /// The new element, once the step is performed.
    [[nodiscard]] model::Element& element() const { return *element_; }

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    const LoadedClass* elementClass_;
    std::string name_;
    Placement placement_;
    model::Element* element_ = nullptr;
    Findings findings_;
};

} // namespace corvane::workbench::core
