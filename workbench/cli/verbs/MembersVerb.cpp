#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/model/Attribute.hpp>
#include <corvane/workbench/process/Event.hpp>
#include <corvane/workbench/process/Task.hpp>

#include <stdexcept>
#include <utility>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

// A visit that wants to see all members never tells it to stop.
constexpr bool kGoOn = false;

void writeJson(utils::io::OutputStream& output, const skill::Element& element) {
    encoder::Document document(output, encoder::Format::lines);
    {
        auto members = document.object();
        {
            auto array = members.addArray("attributes");
            element.forEachAttribute([&](const model::Attribute& attribute) {
                auto object = array.addObject();
                object.addStringView("name", attribute.name());
                object.addNumber("access", std::to_underlying(attribute.access()));
                object.addNumber("type", std::to_underlying(attribute.type().code));
                object.addNumber("bits", attribute.type().bits);
                object.addNumber("directions", attribute.directions().bits());
                return kGoOn;
            });
        }
        {
            auto array = members.addArray("events");
            element.forEachEvent([&](const process::Event& event) {
                auto object = array.addObject();
                object.addStringView("name", event.name());
                object.addNumber("directions", event.directions().bits());
                return kGoOn;
            });
        }
        auto array = members.addArray("tasks");
        element.forEachTask([&](const process::Task& task) {
            array.addObject().addStringView("name", task.name());
            return kGoOn;
        });
    }
    output.put('\n');
}

void writeText(TextOutput& output, const skill::Element& element) {
    bool any = false;
    const auto line = [&](std::string_view kind, const std::string& name, std::string_view more) {
        any = true;
        output.write(kind);
        output.writeBold(name);
        output.writeLine(more);
    };
    element.forEachAttribute([&](const model::Attribute& attribute) {
        const bool writable = attribute.access() == model::Access::readWrite;
        line("attribute  ", attribute.name(), writable ? "  (read and write)" : "");
        return kGoOn;
    });
    element.forEachEvent([&](const process::Event& event) {
        line("event      ", event.name(), "");
        return kGoOn;
    });
    element.forEachTask([&](const process::Task& task) {
        line("task       ", task.name(), "");
        return kGoOn;
    });
    if (!any)
        output.writeLine("The element publishes no attributes, events or tasks.");
}

} // namespace

ExitCode run(const MembersRequest& request, Session& session) {
    const auto project = session.open(request.project);
    if (request.path == kProjectPath)
        throw std::runtime_error("the project itself publishes no attributes, events or tasks");
    const auto& element = *project.element(request.path).getSkillElement();
    if (request.json)
        session.output().writeDocument([&](auto& stream) { writeJson(stream, element); });
    else
        writeText(session.output(), element);
    return kDone;
}

} // namespace corvane::workbench::cli
