#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/edit/Editor.hpp"

#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

/// The class of this name or document key. Several plug-ins may have a class of one name.
const core::LoadedClass& classOf(const core::PluginHost& plugins, std::string_view name) {
    if (const auto* const found = plugins.findClass(name))
        return *found;
    std::vector<const core::LoadedClass*> found;
    std::string known;
    for (const auto& skill : plugins.skills())
        for (const auto& entry : skill.classes) {
            if (entry.elementClass->name() == name)
                found.push_back(&entry);
            known.append(known.empty() ? "" : ", ").append(entry.elementClass->name());
        }
    if (found.size() == 1)
        return *found.front();
    if (found.empty())
        throw std::runtime_error("there is no element class “" + std::string(name) +
                                 "”; the classes are: " + known);
    std::string message =
        "several element classes are called “" + std::string(name) + "”; name one:";
    for (const auto* const entry : found)
        message += " " + entry->documentKey;
    throw std::runtime_error(message);
}

core::Project openFor(const AddRequest& request, Session& session) {
    if (request.path == kProjectPath)
        return session.openOrCreateToChange(request.project);
    return session.openToChange(request.project);
}

} // namespace

ExitCode run(const AddRequest& request, Session& session) {
    auto project = openFor(request, session);
    auto& parent =
        request.path == kProjectPath ? project.model().root() : project.element(request.path);
    core::Editor editor(project);
    const auto& element =
        editor.add(parent, classOf(session.plugins(), request.elementClass), request.name);
    session.save(project, request.project);
    session.output().writeLine(element.path());
    return kDone;
}

} // namespace corvane::workbench::cli
