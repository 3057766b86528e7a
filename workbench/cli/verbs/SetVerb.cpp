#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/FieldInput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/edit/Editor.hpp"
#include "workbench/core/edit/workspace/Fields.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

// `assignment` is of the form LABEL=VALUE.
core::FieldValue readFieldValue(const model::Element& element, const core::OpenForm& form,
                                std::string_view assignment) {
    const auto equals = assignment.find('=');
    auto& control =
        core::fieldOf(form, utils::string::detail::utf8ToUtf16(assignment.substr(0, equals)));
    auto value = readValue(control, assignment.substr(equals + 1));
    if (!value)
        throw std::runtime_error(element.path() + ": " + narrow(control.texts().label) + ": " +
                                 value.error());
    return {std::string(control.key()), *std::move(value)};
}

} // namespace

ExitCode run(const SetRequest& request, Session& session) {
    auto project = session.openToChange(request.project);
    auto& element = project.element(request.path);
    std::vector<core::FieldValue> values;
    {
        const core::OpenForm form(element);
        for (const auto& text : request.values)
            values.push_back(readFieldValue(element, form, text));
    }
    core::Editor editor(project);
    editor.setValues(element, values);
    if (editor.isModified())
        session.save(project, request.project);
    return kDone;
}

} // namespace corvane::workbench::cli
