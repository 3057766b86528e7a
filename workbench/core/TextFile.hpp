#pragma once

#include "workbench/core/FileIdentity.hpp"

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/FunctionRef.hpp>

#include <filesystem>
#include <string>

namespace corvane::workbench::core {

/// The whole content of a file. Throws std::system_error, naming the file.
[[nodiscard]] std::string readTextFile(const std::filesystem::path& file);

/// Gives a file new content, all at once: what `write` writes goes into a new file beside the old
/// one, onto the disk, and then takes its name. An old one that the user may not write is not
/// replaced. The new file has the old one's permissions; a
/// symbolic link stays one and its target is replaced. Returns the new file's identity. Whatever is
/// thrown, by `write` too, leaves the old file as it was and no other behind.
FileIdentity replaceFile(const std::filesystem::path& file,
                         FunctionRef<void(utils::io::OutputStream&)> write);

} // namespace corvane::workbench::core
