#pragma once

#include "workbench/core/plugins/PluginHost.hpp"
#include "workbench/core/project/FileIdentity.hpp"

#include <corvane/workbench/host/Model.hpp>

#include <filesystem>
#include <memory>
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
    Project(const PluginHost& plugins, const std::filesystem::path& file);

    /// An empty project that `saveTo` will create, or the one that the file holds.
    [[nodiscard]] static Project openOrCreate(const PluginHost& plugins,
                                              const std::filesystem::path& file);

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
    /// whatever happens. Throws std::runtime_error when the file changed since it was read, and
    /// std::system_error when it cannot be written; the file is untouched then.
    void save(OnConflict onConflict = OnConflict::refuse);

    /// As `save`, into the given file, which becomes the project's.
    void saveTo(const std::filesystem::path& file, OnConflict onConflict = OnConflict::refuse);

private:
    void readFrom(std::string text);

    const PluginHost* plugins_;
    std::unique_ptr<host::Model> model_;
    std::filesystem::path file_;
    FileIdentity identity_; // of the file as it was read or written last
};

} // namespace corvane::workbench::core
