#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/core/project/Project.hpp"

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane::bench {

/// What the roads work with: the host with the real plug-in, and a folder for their files that goes
/// with it.
class Setup {
public:
    Setup();
    Setup(const Setup&) = delete;
    Setup& operator=(const Setup&) = delete;
    ~Setup();

    [[nodiscard]] const workbench::core::PluginHost& plugins() const { return plugins_; }

    /// Writes a file of that name and returns its path.
    std::filesystem::path write(const std::string& name, std::string_view content) const;
    [[nodiscard]] std::filesystem::path path(const std::string& name) const {
        return folder_ / name;
    }

    /// A project with one PLC that can import.
    struct Target {
        workbench::core::Project project;
        workbench::model::Element* element;
    };
    [[nodiscard]] Target newTarget() const;

    /// Writes the project into a new file, without the flush to disk; an old one must be gone.
    void save(const workbench::core::Project& project, const std::filesystem::path& file) const;

    /// Presses the import button of an element; the document's text.
    [[nodiscard]] static std::string documentOf(workbench::model::Element& element,
                                                const std::filesystem::path& file);

private:
    workbench::core::PluginHost plugins_;
    std::filesystem::path folder_;
};

} // namespace corvane::bench
