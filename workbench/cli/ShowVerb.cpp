#include "workbench/cli/Session.hpp"
#include "workbench/cli/TreePrinter.hpp"
#include "workbench/cli/Verbs.hpp"
#include "workbench/core/DocumentWriter.hpp"

namespace corvane::workbench::cli {

ExitCode run(const ShowRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto& root = project.model().root();
    auto& output = session.output();
    if (request.path) {
        auto& element = project.element(*request.path);
        if (request.json)
            core::writeElement(output, session.plugins(), element);
        else
            printTree(output, element);
    } else if (request.json) {
        core::writeProject(output, session.plugins(), root);
    } else {
        printTree(output, root.childElements());
    }
    return kDone;
}

} // namespace corvane::workbench::cli
