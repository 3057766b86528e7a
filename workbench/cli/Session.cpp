#include "workbench/cli/Session.hpp"

#include "workbench/core/PluginFolders.hpp"

#include <unistd.h>

namespace corvane::workbench::cli {

Session::Session(std::span<const std::filesystem::path> plugins) : output_(STDOUT_FILENO) {
    core::loadPlugins(plugins_, plugins);
}

} // namespace corvane::workbench::cli
