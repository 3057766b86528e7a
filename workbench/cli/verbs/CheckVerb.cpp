#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/core/project/PropertyErrors.hpp"

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

void writeText(TextOutput& output, const std::vector<core::PropertyError>& errors) {
    for (const auto& error : errors) {
        output.writeBold(error.element->path());
        output.write(": ");
        output.write(narrow(error.field));
        output.write(": ");
        output.writeLine(narrow(error.message));
    }
    if (errors.empty())
        output.writeLine("No problems found.");
    else
        output.writeLine(std::to_string(errors.size()) +
                         (errors.size() == 1 ? " problem found." : " problems found."));
}

} // namespace

ExitCode run(const CheckRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto errors = core::propertyErrors(project.model().root().childElements());
    if (request.json)
        session.output().writeDocument([&](auto& stream) { writeJson(stream, errors); });
    else
        writeText(session.output(), errors);
    return errors.empty() ? kDone : kFailed;
}

} // namespace corvane::workbench::cli
