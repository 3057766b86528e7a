#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"

#include <corvane/utils/json/Encoder.hpp>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

void writeClass(encoder::Object object, const core::LoadedSkill& skill,
                const core::LoadedClass& entry) {
    const auto& elementClass = *entry.elementClass;
    object.addStringView("name", elementClass.name());
    object.addStringView("uuid", elementClass.uuid().toString());
    object.addWideString("description", elementClass.description());
    object.addWideString("displayName", elementClass.displayName());
    object.addStringView("shortName", elementClass.shortName());
    object.addNumber("classCode", elementClass.classCode());
    object.add("topLevel", entry.topLevel);
    auto accepts = object.addArray("accepts");
    for (const auto& child : skill.classes)
        if (elementClass.acceptsChild(*child.elementClass))
            accepts.addStringView(child.elementClass->name());
}

void writeJson(utils::io::OutputStream& output, const core::PluginHost& plugins) {
    encoder::Document document(output, encoder::Format::lines);
    {
        auto skills = document.array();
        for (const auto& skill : plugins.skills()) {
            auto object = skills.addObject();
            object.addStringView("skill", skill.skillClass->name());
            object.addStringView("uuid", skill.skillClass->uuid().toString());
            object.addStringView("file", skill.file.string());
            auto classes = object.addArray("classes");
            for (const auto& entry : skill.classes)
                writeClass(classes.addObject(), skill, entry);
        }
    }
    output.put('\n');
}

void writeText(TextOutput& output, const core::PluginHost& plugins) {
    for (const auto& skill : plugins.skills()) {
        output.writeBold(skill.skillClass->name());
        output.writeLine("  " + skill.file.string());
        for (const auto& entry : skill.classes)
            output.writeLine("  " + padded(entry.elementClass->name(), 12) +
                             narrow(entry.elementClass->description()));
    }
    if (plugins.skills().empty())
        output.writeLine("No plug-ins are loaded.");
}

} // namespace

ExitCode run(const PluginsRequest& request, Session& session) {
    if (request.json)
        session.output().writeDocument([&](auto& stream) { writeJson(stream, session.plugins()); });
    else
        writeText(session.output(), session.plugins());
    return kDone;
}

} // namespace corvane::workbench::cli
