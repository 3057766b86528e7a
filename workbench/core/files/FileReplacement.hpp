#pragma once

#include "workbench/core/files/FileIdentity.hpp"

#include <corvane/utils/io/OutputStream.hpp>
#include <corvane/workbench/function_ref.hpp>

#include <filesystem>
#include <optional>
#include <stdexcept>

namespace corvane::workbench::core {

/// Somebody else has changed a file since it was read. The text names it.
class FileChangedError : public std::runtime_error {
public:
    explicit FileChangedError(const std::filesystem::path& file);
};

/// Gives a file new content, all at once: what `write` writes goes into a new file beside the old
/// one, onto the disk, and then takes its name. Whatever is thrown, by `write` too, leaves the old
/// file as it was and no other behind; of a process that was killed, the next replacement removes
/// what is left. Returns the new file's identity.
///
/// - `expected` is the state in which the caller knows the file, that of no file included: where
///   it is in another one, FileChangedError is thrown. This is looked at before anything is
///   written and again when all of it is. Without a value, whatever is there is replaced.
/// - A symbolic link stays one: what it leads to is replaced, or created where there is nothing.
/// - The new file has the old one's permissions, owner, group and extended attributes, and until
///   it has them, nobody but the user can read it. Where it cannot have them, std::runtime_error
///   is thrown; but a file that its group may read and write, as in a folder that several people
///   share, passes to who writes it.
/// - What is no regular file, what the user may not write, and a file of several names (hard
///   links), of which the others would keep the old content, is not replaced: std::runtime_error
///   says why.
FileIdentity replaceFile(const std::filesystem::path& file,
                         const std::optional<FileIdentity>& expected,
                         function_ref<void(utils::io::OutputStream&)> write);

} // namespace corvane::workbench::core
