#pragma once

#include "workbench/core/edit/workspace/Workspace.hpp"

namespace corvane::workbench::core {

/// The waiting references that find their elements by a step: the last thing that it does, and the
/// first that its undo takes back.
///
/// They are looked for once. What is found when the step is made again must be the same, though
/// more may be waiting by then: references of steps that are undone, whose time has not come.
class Findings {
public:
    Findings() = default;
    /// What somebody else has found and noted.
    explicit Findings(host::ReferenceLog found) : found_(std::move(found)), searched_(true) {}

    /// Gives the references their elements; true if there are any.
    bool make(Workspace& workspace);

    /// Lets them wait again; true if there are any.
    bool takeBack(Workspace& workspace);

private:
    host::ReferenceLog found_;
    bool searched_ = false;
};

} // namespace corvane::workbench::core
