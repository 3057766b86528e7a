#include "workbench/cli/Session.hpp"
#include "workbench/cli/TextOutput.hpp"
#include "workbench/cli/Verbs.hpp"
#include "workbench/core/Editor.hpp"

#include <array>

namespace corvane::workbench::cli {

ExitCode run(const RemoveRequest& request, Session& session) {
    auto project = session.open(request.project);
    core::Editor editor(project);
    const auto losses = editor.remove(std::array{&project.element(request.path)});
    project.save();
    auto& output = session.output();
    for (const auto& [holder, text] : losses)
        output.write(printable(holder->path()) + " now refers to nothing: " + printable(text) +
                     " is gone\n");
    return kDone;
}

} // namespace corvane::workbench::cli
