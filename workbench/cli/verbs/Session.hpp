#pragma once

#include "workbench/cli/output/ProgressLine.hpp"
#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/core/plugins/PluginFolders.hpp"
#include "workbench/core/project/Project.hpp"

#include <filesystem>
#include <span>
#include <string>
#include <utility>

namespace corvane::workbench::cli {

/// What every verb works with: the loaded plug-ins and standard output.
class Session {
public:
    /// Loads the plug-ins beside the program, then those of the folders in CORVANE_PLUGIN_PATH,
    /// then the given files. Those that cannot be loaded are in `plugins().failures()`.
    explicit Session(std::span<const std::filesystem::path> files) {
        core::loadPlugins(plugins_, files);
    }

    [[nodiscard]] const core::PluginHost& plugins() const { return plugins_; }

    /// Standard output. What is written arrives when it is flushed.
    [[nodiscard]] TextOutput& output() { return output_; }

    /// Reads a project; throws as core::Project does.
    [[nodiscard]] core::Project open(const std::filesystem::path& file) const {
        return {plugins_, file};
    }

    /// Reads a project to change and save it: until that is done, other programs that change it
    /// wait, as this call does for them. A terminal is told for what.
    [[nodiscard]] core::Project openToChange(const std::filesystem::path& file) const {
        return {plugins_, file, lockToChange(file)};
    }

    /// As above; an empty project where there is no file.
    [[nodiscard]] core::Project openOrCreateToChange(const std::filesystem::path& file) const {
        return core::Project::openOrCreate(plugins_, file, lockToChange(file));
    }

    /// Saves a project, and remembers that: who then cannot print what came of it can still tell.
    void save(core::Project& project, const std::filesystem::path& file) {
        project.save();
        saved_ = file;
    }

    /// A message of failure, with what was done in spite of it.
    [[nodiscard]] std::string tellingWhatWasSaved(std::string message) const {
        return saved_.empty() ? std::move(message)
                              : std::move(message) + "; " + saved_.string() + " was saved";
    }

private:
    [[nodiscard]] static core::FileLock lockToChange(const std::filesystem::path& file) {
        const ProgressLine waiting("Waiting for another program that changes " + file.string());
        return core::FileLock::acquire(file);
    }

    core::PluginHost plugins_;
    TextOutput output_;
    std::filesystem::path saved_; // empty: nothing
};

} // namespace corvane::workbench::cli
