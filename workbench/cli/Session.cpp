#include "workbench/cli/Session.hpp"

#include <unistd.h>

#include <cstdlib>
#include <ranges>
#include <string_view>

namespace corvane::workbench::cli {

namespace {

constexpr const char* kPluginFolder = "plugins"; // beside the program
constexpr const char* kPluginPathVariable = "CORVANE_PLUGIN_PATH";

void loadFromPathVariable(core::PluginHost& plugins) {
    const char* const value = std::getenv(kPluginPathVariable);
    if (value == nullptr)
        return;
    for (const auto folder : std::views::split(std::string_view(value), ':'))
        if (!folder.empty())
            plugins.loadFolder(std::string_view(folder.begin(), folder.end()));
}

} // namespace

Session::Session(std::span<const std::filesystem::path> plugins) : output_(STDOUT_FILENO) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    plugins_.loadFolder(program.parent_path() / kPluginFolder);
    loadFromPathVariable(plugins_);
    for (const auto& file : plugins)
        plugins_.load(file);
}

} // namespace corvane::workbench::cli
