#include "workbench/core/Project.hpp"

#include "workbench/core/DocumentError.hpp"
#include "workbench/core/DocumentReader.hpp"
#include "workbench/core/DocumentWriter.hpp"
#include "workbench/core/ElementWalk.hpp"
#include "workbench/core/TextFile.hpp"

#include <corvane/workbench/skill/ElementFactory.hpp>

#include <array>
#include <utility>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;

constexpr std::array<std::string_view, 2> kProjectMembers{kFormatKey.text(), kElementsKey.text()};

void expectFormat(decoder::Object& project) {
    const auto format = project.find(kFormatKey.text());
    const auto number = format ? format->parseNumberString() : std::string_view();
    if (number.empty())
        project.fail("this is no corvane project", kFormatKey.text());
    if (number != kFormatNumber)
        project.fail("the project is of format " + std::string(number) + ", which is not known",
                     kFormatKey.text());
}

} // namespace

Project::Project(const PluginHost& plugins)
    : plugins_(&plugins), model_(std::make_unique<model::Model>()) {}

Project::Project(const PluginHost& plugins, const std::filesystem::path& file) : Project(plugins) {
    file_ = file;
    identity_ = identityOf(file);
    try {
        readFrom(readTextFile(file));
    } catch (const std::system_error&) {
        throw;
    } catch (const std::runtime_error& error) {
        throw DocumentError(file.string() + ": " + error.what());
    }
}

Project Project::openOrCreate(const PluginHost& plugins, const std::filesystem::path& file) {
    if (identityOf(file).exists())
        return {plugins, file};
    Project project(plugins);
    project.file_ = file;
    return project;
}

void Project::readFrom(std::string text) {
    decoder::Document document(std::move(text));
    auto project = document.root().asObject();
    project.passOver(kProjectMembers);
    expectFormat(project);
    project.rewind();
    if (const auto unknown = project.next())
        config::throwUnknownParameterError(unknown->name);

    auto elements = project.find(kElementsKey.text());
    if (!elements)
        project.fail("the project has no elements", kElementsKey.text());
    auto documents = elements->asArray();
    DocumentReader(*plugins_, model_->references()).readProject(documents, model_->root());
    while (project.next()) {
    }
    document.expectEnd();

    model_->resolveReferences();
    configureAndPublish(model_->root().childElements());
}

model::Element& Project::element(std::string_view path) const {
    model::Element* const found = model_->findElement(path);
    if (found == nullptr)
        throw std::runtime_error("the project has no element \"" + std::string(path) + "\"");
    return *found;
}

bool Project::accepts(const model::Element& parent, const LoadedClass& entry) const {
    if (&parent == &model_->root())
        return entry.topLevel;
    return parent.elementClass().acceptsChild(*entry.elementClass);
}

model::Element& Project::add(model::Element& parent, const LoadedClass& entry,
                             std::string_view name) {
    const auto& elementClass = *entry.elementClass;
    if (!accepts(parent, entry))
        throw std::runtime_error("an element of the class \"" + std::string(elementClass.name()) +
                                 "\" cannot stand there");
    auto& element = parent.appendChild(
        std::make_unique<model::Element>(elementClass, elementClass.factory().createElement()),
        name);
    element.getSkillElement()->makeDefault();
    configureAndPublish(parent.childElements().last(1));
    return element;
}

void Project::save(OnConflict onConflict) { saveTo(file_, onConflict); }

void Project::saveTo(const std::filesystem::path& file, OnConflict onConflict) {
    const auto known = file == file_ ? identity_ : FileIdentity();
    if (onConflict == OnConflict::refuse && identityOf(file) != known)
        throw std::runtime_error(file.string() + " was changed by another program and is not "
                                                 "overwritten");
    identity_ = replaceFile(file, [this](utils::io::OutputStream& stream) {
        writeProject(stream, *plugins_, model_->root());
    });
    file_ = file;
}

} // namespace corvane::workbench::core
