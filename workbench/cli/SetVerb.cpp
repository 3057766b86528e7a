#include "workbench/cli/FieldInput.hpp"
#include "workbench/cli/Session.hpp"
#include "workbench/cli/Verbs.hpp"
#include "workbench/core/Editor.hpp"
#include "workbench/core/edit/Fields.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

core::FieldValue readFieldValue(const core::OpenForm& form, std::string_view text) {
    const auto equals = text.find('=');
    if (equals == std::string_view::npos)
        throw std::runtime_error("“" + std::string(text) + "” is not of the form LABEL=VALUE");
    auto label = utils::string::detail::utf8ToUtf16(text.substr(0, equals));
    auto& control = core::fieldOf(form, label);
    return {std::move(label), readValue(control, text.substr(equals + 1))};
}

} // namespace

ExitCode run(const SetRequest& request, Session& session) {
    auto project = session.open(request.project);
    auto& element = project.element(request.path);
    std::vector<core::FieldValue> values;
    {
        const core::OpenForm form(element);
        for (const auto& text : request.values)
            values.push_back(readFieldValue(form, text));
    }
    core::Editor editor(project);
    editor.setValues(element, values);
    if (editor.isModified())
        project.save();
    return kDone;
}

} // namespace corvane::workbench::cli
