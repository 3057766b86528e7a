#pragma once

#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/plugins/PluginHost.hpp"
#include "workbench/core/project/Project.hpp"

#include "TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// What the tests of projects work with.
namespace corvane::workbench::core::test {

using utils::test::contentOf;
using utils::test::TemporaryFolder;

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
    TemporaryFolder folder;
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
