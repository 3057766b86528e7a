#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/edit/Editor.hpp"

#include <array>

namespace corvane::workbench::cli {

ExitCode run(const RemoveRequest& request, Session& session) {
    auto project = session.openToChange(request.project);
    core::Editor editor(project);
    const auto losses = editor.remove(std::array{&project.element(request.path)});
    session.save(project, request.project);
    for (const auto& [holder, text] : losses)
        session.output().writeLine(holder->path() + " now refers to nothing: " + text + " is gone");
    return kDone;
}

} // namespace corvane::workbench::cli
