#pragma once

#include "workbench/core/plugins/SharedLibrary.hpp"

#include <corvane/workbench/model/Element.hpp>
#include <corvane/workbench/skill/Skill.hpp>

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

/// An element class of a loaded skill. It stays where it is as long as its host lives.
struct LoadedClass {
    const skill::Element::Class* elementClass;
    std::string documentKey; // "@Skill." + skill + "." + class
    bool topLevel;           // may stand directly under the skill

    /// Whether an element of the class may stand directly below `parent`, which may be the root of
    /// a project.
    [[nodiscard]] bool mayStandBelow(const model::Element& parent) const {
        return parent.isRoot() ? topLevel : parent.elementClass().acceptsChild(*elementClass);
    }
};

/// A skill of a loaded plug-in.
struct LoadedSkill {
    const skill::Skill::Class* skillClass = nullptr;
    std::unique_ptr<skill::Skill> skill;
    std::filesystem::path file;       // of its plug-in, as it was given
    std::vector<LoadedClass> classes; // in the order in which the skill registered them
};

/// A plug-in that was not loaded, and why; the reason is UTF-8, translated where it is ours.
struct PluginFailure {
    std::filesystem::path file;
    std::string reason;
};

/// The loaded plug-ins. It must outlive every element of their classes; its destructor unloads them
/// in the reverse order.
class PluginHost {
public:
    PluginHost() = default;
    PluginHost(const PluginHost&) = delete;
    PluginHost& operator=(const PluginHost&) = delete;
    ~PluginHost();

    /// Loads one plug-in. What fails is kept in `failures` and leaves nothing loaded. A file that
    /// is loaded already is passed over; one that `requireLoadable` refuses is not touched.
    void load(const std::filesystem::path& file);

    /// Loads every "*.so" of a folder, in the order of their names; a folder that does not exist is
    /// an empty one. One that cannot be read, or that others may write to, is a failure.
    void loadFolder(const std::filesystem::path& folder);

    /// What is loaded, and what is not, in the order in which it was tried.
    [[nodiscard]] const std::vector<LoadedSkill>& skills() const { return skills_; }
    [[nodiscard]] const std::vector<PluginFailure>& failures() const { return failures_; }

    /// The class that a document's key names; null if no loaded skill has it.
    [[nodiscard]] const LoadedClass* findClass(std::string_view documentKey) const;

    /// The entry of a loaded class. Throws std::logic_error for one that no loaded skill has, which
    /// no element of a project is of.
    [[nodiscard]] const LoadedClass& entryOf(const skill::Element::Class& elementClass) const;

private:
    std::vector<std::filesystem::path> modulesOf(const std::filesystem::path& folder);
    void adopt(const skill::Skill::Class& skillClass, const std::filesystem::path& file);
    void rejectConflicts(const LoadedSkill& candidate) const;

    std::vector<std::filesystem::path> files_;
    std::vector<SharedLibrary> libraries_;
    std::vector<LoadedSkill> skills_;
    std::vector<PluginFailure> failures_;
};

} // namespace corvane::workbench::core
