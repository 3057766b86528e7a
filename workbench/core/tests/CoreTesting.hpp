#pragma once

#include "workbench/core/PluginHost.hpp"
#include "workbench/core/Project.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// What the tests of projects work with.
namespace corvane::workbench::core::test {

/// A folder that goes with its test.
class Folder {
public:
    Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

    /// Creates or overwrites a file.
    std::filesystem::path write(std::string_view name, std::string_view content) const;
    [[nodiscard]] static std::string read(const std::filesystem::path& file);

    /// The names in the folder, sorted.
    [[nodiscard]] std::vector<std::string> files() const;

private:
    std::filesystem::path path_;
};

/// A plug-in made for the tests, by its name.
[[nodiscard]] std::filesystem::path testPlugin(std::string_view name);

/// Projects over two loaded plug-ins: the one of the tests and the one that comes with the program.
class ProjectTest : public testing::Test {
protected:
    ProjectTest();

    /// The project that a file with these elements (without the outer brackets) holds.
    [[nodiscard]] Project load(std::string_view elements) const;

    /// The elements of a project as a save would write them, without blanks between them.
    [[nodiscard]] std::string elementsOf(const Project& project) const;

    /// Every property error of a project, "PATH: FIELD: MESSAGE".
    [[nodiscard]] static std::vector<std::string> errorsOf(const Project& project);

    /// What saving a project and loading it again gives.
    [[nodiscard]] Project reloaded(const Project& project) const;

public:
public:
    PluginHost plugins;
    Folder folder;
};

/// The text of the exception that `action` throws; "" where it throws none.
template <class Action>
[[nodiscard]] std::string messageOf(Action&& action) {
    try {
        std::forward<Action>(action)();
    } catch (const std::exception& error) {
        return error.what();
    }
    return {};
}

} // namespace corvane::workbench::core::test
