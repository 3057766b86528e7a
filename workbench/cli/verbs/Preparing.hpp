#pragma once

#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/import/Preparation.hpp"

#include <filesystem>
#include <string_view>
#include <vector>

namespace corvane::workbench::cli {

/// What a verb fails with where all that the files hold was left out.
inline constexpr std::string_view kNothingPrepared = "nothing in the files can be imported";

/// Prepares the files with the plug-in that takes them, and prints a line to standard error for
/// each thing that is left out. Throws as core::prepareFiles does.
[[nodiscard]] core::PreparedFiles prepare(const Session& session,
                                          std::vector<std::filesystem::path> files,
                                          const PrepareOptions& options);

} // namespace corvane::workbench::cli
