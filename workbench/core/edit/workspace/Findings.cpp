#include "workbench/core/edit/workspace/Findings.hpp"

namespace corvane::workbench::core {

bool Findings::make(Workspace& workspace) {
    if (searched_)
        found_.attach();
    else
        workspace.model().resolveReferences(&found_);
    searched_ = true;
    return !found_.empty();
}

bool Findings::takeBack(Workspace& workspace) {
    found_.detach(workspace.model());
    return !found_.empty();
}

} // namespace corvane::workbench::core
