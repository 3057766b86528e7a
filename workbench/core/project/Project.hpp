#pragma once

#include "workbench/core/files/FileIdentity.hpp"
#include "workbench/core/files/FileLock.hpp"
#include "workbench/core/plugins/PluginHost.hpp"

#include <corvane/workbench/host/Model.hpp>

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::workbench::core {

/// A project: the tree of elements, and the file that it is kept in.
class Project {
public:
    /// An empty project that no file holds yet. `plugins` must outlive the project.
    explicit Project(const PluginHost& plugins);

    /// Reads a project file. Throws DocumentError, whose text begins with the file, when its
    /// content cannot be loaded, and std::system_error when it cannot be read.
    ///
    /// Who reads it only to change and save it at once gives the lock of the file: until the
    /// project was saved or goes, other programs that do the same wait.
    Project(const PluginHost& plugins, const std::filesystem::path& file, FileLock lock = {});

    /// An empty project that `save` will create, or the one that the file holds.
    [[nodiscard]] static Project
    openOrCreate(const PluginHost& plugins, const std::filesystem::path& file, FileLock lock = {});

    [[nodiscard]] const PluginHost& plugins() const { return *plugins_; }
    [[nodiscard]] host::Model& model() { return *model_; }
    [[nodiscard]] const host::Model& model() const { return *model_; }

    /// The element with this path. Throws std::runtime_error when there is none.
    [[nodiscard]] model::Element& element(std::string_view path) const;

    /// Adds an element of a class below `parent` ("root()" for the top), in its default state and
    /// alive. Throws std::runtime_error when the parent does not accept the class.
    model::Element& add(model::Element& parent, const LoadedClass& entry, std::string_view name);

    /// What to do when the file changed on disk since it was read.
    enum class OnConflict { refuse, overwrite };

    /// Writes the project to its file, which holds the old content or the new one at every moment,
    /// whatever happens. Waits for another program that is changing the file. Throws
    /// FileChangedError when the file changed since it was read, and what FileLock and
    /// `replaceFile` throw; the file is untouched then.
    void save(OnConflict onConflict = OnConflict::refuse);

    /// As `save`, into the given file, which becomes the project's.
    void saveTo(const std::filesystem::path& file, OnConflict onConflict = OnConflict::refuse);

    /// Likewise for who knows the file better than the project does: it must be in the `known`
    /// state, or in any where there is none.
    void saveTo(const std::filesystem::path& file, const std::optional<FileIdentity>& known);

    /// The state of the project's file in which it was read or written last.
    [[nodiscard]] const FileIdentity& fileIdentity() const { return identity_; }

private:
    void readFrom(std::string text);

    const PluginHost* plugins_;
    std::unique_ptr<host::Model> model_;
    std::filesystem::path file_;
    FileIdentity identity_; // of the file as it was read or written last
    FileLock lock_;         // from reading until saving, if that is one job
};

} // namespace corvane::workbench::core
