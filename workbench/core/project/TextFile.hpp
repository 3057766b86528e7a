#pragma once

#include "workbench/core/project/FileIdentity.hpp"

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/function_ref.hpp>

#include <filesystem>
#include <string>

namespace corvane::workbench::core {

/// The whole content of a file. Throws std::system_error, naming the file.
[[nodiscard]] std::string readTextFile(const std::filesystem::path& file);

/// Gives a file new content, all at once: what `write` writes goes into a new file beside the old
/// one, onto the disk, and then takes its name. An old one that the user may not write is not
/// replaced. The new file has the old one's permissions. A symbolic link stays one: what it leads
/// to is replaced, or created where there is nothing. Returns the new file's identity. Whatever is
/// thrown, by `write` too, leaves the old file as it was and no other behind.
FileIdentity replaceFile(const std::filesystem::path& file,
                         function_ref<void(utils::io::OutputStream&)> write);

} // namespace corvane::workbench::core
