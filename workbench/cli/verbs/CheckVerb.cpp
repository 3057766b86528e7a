#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/memory/MemoryWarnings.hpp"
#include "workbench/core/project/ElementWalk.hpp"
#include "workbench/core/project/FieldRemarks.hpp"
#include "workbench/core/project/PropertyErrors.hpp"

#include <corvane/utils/json/Encoder.hpp>

#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

struct Findings {
    std::vector<core::PropertyError> errors;
    std::vector<core::PropertyError> remarks; // on values that are valid
    std::vector<core::MemoryWarning> warnings;
    bool withWarnings; // they and the remarks were asked for
};

void writeEntry(encoder::Array& array, std::string_view severity, const model::Element& element,
                std::u16string_view field, std::u16string_view message) {
    auto object = array.addObject();
    if (!severity.empty())
        object.addStringView("severity", severity);
    object.addStringView("element", element.path());
    object.addWideString("field", field);
    object.addWideString("message", message);
}

void writeJson(utils::io::OutputStream& output, const Findings& found) {
    encoder::Document document(output, encoder::Format::lines);
    {
        auto array = document.array();
        for (const auto& error : found.errors)
            writeEntry(array, found.withWarnings ? "error" : "", *error.element, error.field,
                       error.message);
        for (const auto& remark : found.remarks)
            writeEntry(array, "warning", *remark.element, remark.field, remark.message);
        for (const auto& warning : found.warnings)
            writeEntry(array, "warning", *warning.element, {}, core::messageOf(warning));
    }
    output.put('\n');
}

void writeLine(TextOutput& output, const model::Element& element, std::string_view field,
               std::u16string_view message) {
    output.writeBold(element.path());
    output.write(": ");
    output.write(field);
    output.write(": ");
    output.writeLine(narrow(message));
}

/// "No problems", "1 problem", "3 problems"; `none` is "No" or "no".
std::string counted(std::size_t number, std::string_view what, std::string_view none) {
    std::string text = number == 0 ? std::string(none) : std::to_string(number);
    text.append(" ").append(what);
    return number == 1 ? text : text + "s";
}

void writeText(TextOutput& output, const Findings& found) {
    for (const auto& error : found.errors)
        writeLine(output, *error.element, narrow(error.field), error.message);
    for (const auto& remark : found.remarks)
        writeLine(output, *remark.element, "warning", remark.message);
    for (const auto& warning : found.warnings)
        writeLine(output, *warning.element, "warning", core::messageOf(warning));
    auto summary = counted(found.errors.size(), "problem", "No");
    if (found.withWarnings)
        summary += ", " + counted(found.remarks.size() + found.warnings.size(), "warning", "no");
    output.writeLine(summary + " found.");
}

} // namespace

ExitCode run(const CheckRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto elements = project.model().root().childElements();
    Findings found{core::propertyErrors(elements), {}, {}, request.warnings};
    if (request.warnings) {
        found.remarks = core::fieldRemarks(elements);
        found.warnings = core::memoryWarnings(elements);
    }
    if (request.json)
        session.output().writeDocument([&](auto& stream) { writeJson(stream, found); });
    else
        writeText(session.output(), found);
    return found.errors.empty() ? kDone : kFailed;
}

} // namespace corvane::workbench::cli
