#include "workbench/cli/Session.hpp"
#include "workbench/cli/TextOutput.hpp"
#include "workbench/cli/Verbs.hpp"
#include "workbench/core/ElementWalk.hpp"
#include "workbench/core/PropertyErrors.hpp"

#include <corvane/utils/json/Encoder.hpp>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

void writeJson(utils::io::OutputStream& output, const std::vector<core::PropertyError>& errors) {
    encoder::Document document(output, encoder::Format::lines);
    {
        auto array = document.array();
        for (const auto& error : errors) {
            auto object = array.addObject();
            object.addStringView("element", error.element->path());
            object.addWideString("field", error.field);
            object.addWideString("message", error.message);
        }
    }
    output.put('\n');
}

void writeText(utils::io::OutputStream& output, const std::vector<core::PropertyError>& errors) {
    for (const auto& error : errors) {
        output.write(bold(printable(error.element->path())));
        output.write(": ");
        output.write(printable(narrow(error.field)));
        output.write(": ");
        output.write(printable(narrow(error.message)));
        output.put('\n');
    }
    if (errors.empty())
        output.write("No problems found.\n");
    else
        output.write(std::to_string(errors.size()) +
                     (errors.size() == 1 ? " problem found.\n" : " problems found.\n"));
}

} // namespace

ExitCode run(const CheckRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto errors = core::propertyErrors(project.model().root().childElements());
    (request.json ? writeJson : writeText)(session.output(), errors);
    return errors.empty() ? kDone : kFailed;
}

} // namespace corvane::workbench::cli
