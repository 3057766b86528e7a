#pragma once

#include <filesystem>
#include <string>

namespace corvane::workbench::core {

/// The whole content of a file. Throws std::system_error, naming the file.
[[nodiscard]] std::string readTextFile(const std::filesystem::path& file);

} // namespace corvane::workbench::core
