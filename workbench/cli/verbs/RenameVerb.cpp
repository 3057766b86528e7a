#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/edit/Editor.hpp"

namespace corvane::workbench::cli {

ExitCode run(const RenameRequest& request, Session& session) {
    auto project = session.openToChange(request.project);
    core::Editor editor(project);
    editor.rename(project.element(request.path), request.name);
    if (editor.isModified())
        session.save(project, request.project);
    return kDone;
}

} // namespace corvane::workbench::cli
