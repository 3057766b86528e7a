#pragma once

#include "workbench/cli/ExitCode.hpp"
#include "workbench/cli/Requests.hpp"

namespace corvane::workbench::cli {

class Session;

/// Each does what its request asks for and returns the exit code. What is thrown has failed the job
/// and is for the caller to report.
ExitCode run(const ImportRequest& request, Session& session);
ExitCode run(const ShowRequest& request, Session& session);
ExitCode run(const MembersRequest& request, Session& session);
ExitCode run(const CheckRequest& request, Session& session);
ExitCode run(const FormRequest& request, Session& session);
ExitCode run(const SetRequest& request, Session& session);
ExitCode run(const AddRequest& request, Session& session);
ExitCode run(const RenameRequest& request, Session& session);
ExitCode run(const RemoveRequest& request, Session& session);
ExitCode run(const PluginsRequest& request, Session& session);

} // namespace corvane::workbench::cli
