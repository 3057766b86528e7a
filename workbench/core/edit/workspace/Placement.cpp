#include "workbench/core/edit/workspace/Placement.hpp"

namespace corvane::workbench::core {

bool Placement::takeOut(Workspace& workspace) {
    lost_.clear();
    for (const auto position : positions_)
        lost_.collect(*parent_->childElements()[position]);
    lost_.detach(workspace.model());
    children_ = workspace.take(*parent_, positions_);
    return !lost_.empty();
}

bool Placement::putBack(Workspace& workspace) {
    lost_.attach();
    workspace.put(*parent_, std::exchange(children_, {}), positions_);
    return !lost_.empty();
}

} // namespace corvane::workbench::core
