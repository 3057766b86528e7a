#include "workbench/core/plugins/PluginHost.hpp"

#include "workbench/core/plugins/ModuleFile.hpp"

#include <corvane/workbench/config/DocumentKeys.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <system_error>

namespace corvane::workbench::core {

namespace {

std::vector<const skill::Skill::Class*> registeredSkills() {
    std::vector<const skill::Skill::Class*> skills;
    skill::Skill::Class::forEachRegistered([&](const auto& entry) { skills.push_back(&entry); });
    return skills;
}

LoadedSkill describe(const skill::Skill::Class& skillClass, const std::filesystem::path& file) {
    LoadedSkill skill{&skillClass, nullptr, file, {}};
    skill::ElementClassRegistrar registrar;
    skillClass.registerElementClasses(registrar);
    const auto prefix =
        std::string(config::kElementKeyPrefix).append(skillClass.name()).append(".");
    for (const auto* elementClass : registrar.classes())
        skill.classes.push_back({elementClass, prefix + std::string(elementClass->name()),
                                 skillClass.isTopLevelElementClass(*elementClass)});
    return skill;
}

[[noreturn]] void refuse(std::string_view text,
                         std::initializer_list<std::string_view> arguments = {}) {
    throw std::runtime_error(
        i18n::translateToUtf8("corvane::workbench::core::PluginHost", text, arguments));
}

/// Why the exception that is being handled was thrown; the system's reasons without its calls.
std::string currentReason() try { throw; } catch (const std::system_error& error) {
    return error.code().message();
} catch (const std::exception& error) {
    return error.what();
}

} // namespace

PluginHost::~PluginHost() {
    skills_.clear();
    while (!libraries_.empty())
        libraries_.pop_back();
}

void PluginHost::load(const std::filesystem::path& file) try {
    const auto canonical = std::filesystem::canonical(file);
    if (std::ranges::find(files_, canonical) != files_.end())
        return;

    requireLoadable(canonical);
    const auto before = registeredSkills();
    SharedLibrary library(canonical);
    const auto loadedBefore = skills_.size();
    try {
        for (const auto* skillClass : registeredSkills())
            if (std::ranges::find(before, skillClass) == before.end())
                adopt(*skillClass, file);
        if (skills_.size() == loadedBefore)
            refuse("it brings no skill");
    } catch (const std::exception& error) {
        // The exception may be of a class of the plug-in, which is about to be unloaded.
        skills_.resize(loadedBefore);
        throw std::runtime_error(error.what());
    } catch (...) {
        skills_.resize(loadedBefore);
        refuse("it threw what is no exception");
    }
    files_.push_back(canonical);
    libraries_.push_back(std::move(library));
} catch (...) {
    failures_.push_back({file, currentReason()});
}

void PluginHost::loadFolder(const std::filesystem::path& folder) {
    for (const auto& file : modulesOf(folder))
        load(file);
}

std::vector<std::filesystem::path> PluginHost::modulesOf(const std::filesystem::path& folder) try {
    std::vector<std::filesystem::path> files;
    if (!exists(folder))
        return files;
    requireOwnFolder(folder);
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        if (entry.path().extension() == ".so")
            files.push_back(entry.path());
    std::ranges::sort(files);
    return files;
} catch (...) {
    failures_.push_back({folder, currentReason()});
    return {};
}

const LoadedClass* PluginHost::findClass(std::string_view documentKey) const {
    for (const auto& skill : skills_)
        for (const auto& entry : skill.classes)
            if (entry.documentKey == documentKey)
                return &entry;
    return nullptr;
}

const LoadedClass& PluginHost::entryOf(const skill::Element::Class& elementClass) const {
    for (const auto& skill : skills_)
        for (const auto& entry : skill.classes)
            if (entry.elementClass == &elementClass)
                return entry;
    throw std::logic_error("element class of no loaded skill");
}

void PluginHost::adopt(const skill::Skill::Class& skillClass, const std::filesystem::path& file) {
    auto candidate = describe(skillClass, file);
    rejectConflicts(candidate);
    candidate.skill = skillClass.createSkill();
    skills_.push_back(std::move(candidate));
}

void PluginHost::rejectConflicts(const LoadedSkill& candidate) const {
    const auto& skillClass = *candidate.skillClass;
    for (const auto& other : skills_) {
        if (other.skillClass->name() == skillClass.name())
            refuse("the skill name “{}” is taken by {}", {skillClass.name(), other.file.native()});
        if (other.skillClass->uuid() == skillClass.uuid())
            refuse("the UUID of the skill “{}” is taken by {}",
                   {skillClass.name(), other.file.native()});
    }
    for (auto entry = candidate.classes.begin(); entry != candidate.classes.end(); ++entry)
        for (auto other = candidate.classes.begin(); other != entry; ++other)
            if (other->documentKey == entry->documentKey ||
                other->elementClass->uuid() == entry->elementClass->uuid())
                refuse("the element class “{}” is registered twice", {entry->elementClass->name()});
}

} // namespace corvane::workbench::core
