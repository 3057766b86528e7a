#pragma once

namespace corvane::workbench::cli {

/// Reads the command line, runs the verb that it names, reports what failed on standard error, and
/// returns the process's exit code.
[[nodiscard]] int runCommandLine(int argc, const char* const* argv);

} // namespace corvane::workbench::cli
