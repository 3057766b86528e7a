#pragma once

namespace corvane::workbench::cli {

/// The exit codes, which scripts rely on.
enum ExitCode : int {
    kDone = 0,
    /// The job failed, or `check` found problems.
    kFailed = 1,
    /// The command line is wrong.
    kUsage = 2,
};

} // namespace corvane::workbench::cli
