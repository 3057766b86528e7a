#pragma once

#include <filesystem>
#include <string>

namespace corvane::bench {

/// Runs this program once more, with a verb for which it prints a line; returns that line. For what
/// a process that has done other work before cannot tell: it keeps memory, in pieces, that a fresh
/// one would have to ask the system for.
[[nodiscard]] std::string askFreshProcess(const char* verb, const std::filesystem::path& file);

} // namespace corvane::bench
