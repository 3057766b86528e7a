#include "workbench/core/plugins/PluginFolders.hpp"

#include <cstdlib>
#include <ranges>
#include <string_view>

namespace corvane::workbench::core {

namespace {

constexpr const char* kPluginFolder = "plugins"; // beside the program
constexpr const char* kPluginPathVariable = "CORVANE_PLUGIN_PATH";

} // namespace

void loadPlugins(PluginHost& plugins, std::span<const std::filesystem::path> files) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    plugins.loadFolder(program.parent_path() / kPluginFolder);
    if (const char* const folders = std::getenv(kPluginPathVariable); folders != nullptr)
        for (const auto folder : std::views::split(std::string_view(folders), ':'))
            if (!folder.empty())
                plugins.loadFolder(std::string_view(folder.begin(), folder.end()));
    for (const auto& file : files)
        plugins.load(file);
}

} // namespace corvane::workbench::core
