#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane::bench {

/// Runs this program once more, with a verb for which it prints a line; returns that line. For what
/// a process that has done other work before cannot tell: it keeps memory, in pieces, that a fresh
/// one would have to ask the system for.
[[nodiscard]] std::string askFreshProcess(const char* verb, const std::filesystem::path& file);

/// Runs this program once more under callgrind, with a verb that goes some roads; returns the
/// instructions of each, which are the same at every run but for a few in a thousand. The system's
/// own are not among them.
/// @param roads How many there are: each starts the counting and ends it with a dump.
[[nodiscard]] std::vector<double>
countInFreshProcess(const char* verb, const std::filesystem::path& file, std::size_t roads);

} // namespace corvane::bench
