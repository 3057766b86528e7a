#pragma once

#include <filesystem>

namespace corvane::workbench::core {

/// Looks at a file before the system's loader does, which trusts it: a module is mapped into memory
/// and runs as it is loaded. Throws std::runtime_error with the reason, translated, or
/// std::system_error, where it must not be loaded:
///   - it is no regular file: the loader would wait for a pipe's writer, for ever;
///   - it says that it is longer than it is, as half a copy does: touching what is missing would
///   end
///     the program;
///   - somebody else may change it, or put another in its place: it belongs to another user than
///     the program's and the system's, or others may write to it or to its folder.
/// What is no module at all is left to the loader, which says so.
/// The file is one without links on its way, as std::filesystem::canonical gives it.
void requireLoadable(const std::filesystem::path& file);

/// The last of these for a folder of plug-ins, in which whoever may write could put one.
void requireOwnFolder(const std::filesystem::path& folder);

} // namespace corvane::workbench::core
