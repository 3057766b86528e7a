#pragma once

#include "workbench/core/plugins/PluginHost.hpp"

#include <filesystem>
#include <span>

namespace corvane::workbench::core {

/// Loads the plug-ins beside the program, then those of the folders in CORVANE_PLUGIN_PATH, then
/// the given files. What cannot be loaded is in the host's failures, and stops none of the others;
/// a folder that does not exist is an empty one.
void loadPlugins(PluginHost& plugins, std::span<const std::filesystem::path> files);

} // namespace corvane::workbench::core
