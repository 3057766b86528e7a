#pragma once

#include "workbench/core/edit/Workspace.hpp"

#include <corvane/workbench/model/Staging.hpp>

namespace corvane::workbench::core {

/// Elements loaded anew, beside the project, for the place to which they shall be moved.
class StagedMove {
public:
    /// Throws EditError where they cannot be loaded there.
    StagedMove(Project& project, std::span<model::Element* const> elements, model::Element& parent);

    using Replaced = std::vector<std::pair<model::Element*, std::unique_ptr<skill::Element>>>;

    /// Gives the elements, and all below them, their new skill elements; returns the old ones. The
    /// elements are as they were when they were staged.
    [[nodiscard]] Replaced adopt();

private:
    Project* project_;
    std::vector<model::Element*> elements_;
    model::ReferenceTable references_;
    model::Staging staging_;
};

} // namespace corvane::workbench::core
