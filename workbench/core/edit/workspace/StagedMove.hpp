#pragma once

#include "workbench/core/project/Project.hpp"

#include <corvane/workbench/host/Staging.hpp>

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace corvane::workbench::core {

/// Elements loaded anew, beside the project, for the place to which they shall be moved.
class StagedMove {
public:
    /// Loads `elements`, which stand in the project, for a place below `parent`. Throws EditError
    /// where they cannot be loaded there; the project is as it was in any case.
    StagedMove(Project& project, std::span<model::Element* const> elements, model::Element& parent);

    using Replaced = std::vector<std::pair<model::Element*, std::unique_ptr<skill::Element>>>;

    /// Gives the elements, and all below them, their new skill elements; returns the old ones. The
    /// elements are as they were when they were staged.
    [[nodiscard]] Replaced adopt();

private:
    Project* project_;
    std::vector<model::Element*> elements_;
    host::ReferenceTable references_;
    host::Staging staging_;
};

} // namespace corvane::workbench::core
