#include "workbench/cli/output/TreePrinter.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/project/DocumentWriter.hpp"

namespace corvane::workbench::cli {

ExitCode run(const ShowRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto& root = project.model().root();
    const bool whole = !request.path || *request.path == kProjectPath;
    const auto& shown = whole ? root : project.element(*request.path);
    auto& output = session.output();
    if (request.json)
        output.writeDocument([&](auto& stream) {
            const auto write = whole ? core::writeProject : core::writeElement;
            write(stream, session.plugins(), shown);
        });
    else if (whole)
        printTree(output, root.childElements());
    else
        printTree(output, shown);
    return kDone;
}

} // namespace corvane::workbench::cli
