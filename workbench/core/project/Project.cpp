#include "workbench/core/project/Project.hpp"

#include "workbench/core/files/FileReplacement.hpp"
#include "workbench/core/files/TextFile.hpp"
#include "workbench/core/project/DocumentReader.hpp"
#include "workbench/core/project/DocumentWriter.hpp"
#include "workbench/core/project/ElementWalk.hpp"

#include <corvane/workbench/host/Tree.hpp>
#include <corvane/workbench/i18n/Translate.hpp>
#include <corvane/workbench/skill/ElementFactory.hpp>

#include <array>
#include <initializer_list>
#include <optional>
#include <utility>

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;

using Arguments = std::initializer_list<std::string_view>;

constexpr std::array<std::string_view, 2> kProjectMembers{kFormatKey.text(), kElementsKey.text()};

std::string textOf(std::string_view text, Arguments arguments = {}) {
    return i18n::translateToUtf8("corvane::workbench::core::Project", text, arguments);
}

void expectFormat(decoder::Object& project) {
    const auto format = project.find(kFormatKey.text());
    const auto number = format ? format->parseNumberString() : std::string_view();
    if (number.empty())
        project.fail(textOf("this is no corvane project"), kFormatKey.text());
    if (number != kFormatNumber)
        project.fail(textOf("the project is of format {}, which is not known", {number}),
                     kFormatKey.text());
}

} // namespace

Project::Project(const PluginHost& plugins)
    : plugins_(&plugins), model_(std::make_unique<host::Model>()) {}

Project::Project(const PluginHost& plugins, const std::filesystem::path& file, FileLock lock)
    : Project(plugins) {
    lock_ = std::move(lock);
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

Project Project::openOrCreate(const PluginHost& plugins, const std::filesystem::path& file,
                              FileLock lock) {
    if (identityOf(file).exists())
        return {plugins, file, std::move(lock)};
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
        project.fail(textOf("the project has no elements"), kElementsKey.text());
    DocumentReader(*plugins_, model_->references())
        .readProject(elements->asArray(), model_->root());
    while (project.next()) {
    }
    document.expectEnd();

    model_->resolveReferences();
    configureAndPublish(model_->root().childElements());
}

model::Element& Project::element(std::string_view path) const {
    model::Element* const found = model_->findElement(path);
    if (found == nullptr)
        throw std::runtime_error(textOf("the project has no element “{}”", {path}));
    return *found;
}

model::Element& Project::add(model::Element& parent, const LoadedClass& entry,
                             std::string_view name) {
    const auto& elementClass = *entry.elementClass;
    if (!entry.mayStandBelow(parent))
        throw std::runtime_error(
            textOf("an element of the class “{}” cannot stand there", {elementClass.name()}));
    auto& element = host::appendChild(
        parent,
        std::make_unique<model::Element>(elementClass, elementClass.factory().createElement()),
        name);
    element.getSkillElement()->makeDefault();
    configureAndPublish(parent.childElements().last(1));
    return element;
}

void Project::save(OnConflict onConflict) { saveTo(file_, onConflict); }

void Project::saveTo(const std::filesystem::path& file, OnConflict onConflict) {
    std::optional<FileIdentity> known;
    if (onConflict == OnConflict::refuse)
        known = file == file_ ? identity_ : FileIdentity();
    saveTo(file, known);
}

void Project::saveTo(const std::filesystem::path& file, const std::optional<FileIdentity>& known) {
    const bool isLocked = file == file_ && lock_.holds();
    const auto lock = isLocked ? std::move(lock_) : FileLock::acquire(file);
    identity_ = replaceFile(file, known, [this](utils::io::OutputStream& stream) {
        writeProject(stream, *plugins_, model_->root());
    });
    file_ = file;
}

} // namespace corvane::workbench::core
