#pragma once

#include "workbench/core/import/ImportMerge.hpp"

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What a user can ask for on the command line: for each verb a request, and the function that does
/// what it asks for and returns the exit code. What is thrown has failed the job and is for the
/// caller to report.
namespace corvane::workbench::cli {

class Session;

/// The exit codes, which scripts rely on.
enum ExitCode : int {
    kDone = 0,
    /// The job failed, or `check` found problems.
    kFailed = 1,
    /// The command line is wrong.
    kUsage = 2,
};

/// The path of the project itself, above all elements.
inline constexpr std::string_view kProjectPath = "/";

/// What a user may ask for where files are prepared for an import.
struct PrepareOptions {
    bool standardAccess = false;
    bool showHidden = false;
    std::vector<std::string> constants; // "NAME=VALUE"
    std::vector<std::string> blocks;    // the only ones that are wanted; all where it is empty
};

struct PrepareRequest {
    std::vector<std::filesystem::path> files;
    std::optional<std::filesystem::path> output; // standard output without it
    PrepareOptions options = {};
};
ExitCode run(const PrepareRequest& request, Session& session);

struct ImportRequest {
    std::vector<std::filesystem::path> files; // one, unless they are prepared
    bool prepare = false;
    PrepareOptions prepareOptions = {};
    std::optional<std::filesystem::path> project;
    std::optional<std::string> at; // path of the element to import into
    bool document = false;         // print the document and change nothing
    bool dryRun = false;           // tell what would change and save nothing
    bool verbose = false;          // tell of each element that changed, and how
    bool json = false;
    core::ImportOptions options = {};
};
ExitCode run(const ImportRequest& request, Session& session);

struct ShowRequest {
    std::filesystem::path project;
    std::optional<std::string> path; // the whole project without it
    bool json = false;
};
ExitCode run(const ShowRequest& request, Session& session);

struct MembersRequest {
    std::filesystem::path project;
    std::string path;
    bool json = false;
};
ExitCode run(const MembersRequest& request, Session& session);

struct CheckRequest {
    std::filesystem::path project;
    bool json = false;
    bool warnings = false; // tell what is suspicious and no error, too
};
ExitCode run(const CheckRequest& request, Session& session);

struct MapRequest {
    std::filesystem::path project;
    std::string path; // of a block, or of an element that lies in a memory
    bool text = false;
    unsigned width = 8;                          // bytes in a row
    std::optional<std::filesystem::path> output; // standard output without it
};
ExitCode run(const MapRequest& request, Session& session);

struct FormRequest {
    std::filesystem::path project;
    std::string path;
    bool json = false;
};
ExitCode run(const FormRequest& request, Session& session);

struct SetRequest {
    std::filesystem::path project;
    std::string path;
    std::vector<std::string> values; // "LABEL=VALUE", each label once
};
ExitCode run(const SetRequest& request, Session& session);

struct AddRequest {
    std::filesystem::path project;
    std::string path; // of the parent
    std::string elementClass;
    std::string name; // the class's own without it
};
ExitCode run(const AddRequest& request, Session& session);

struct RenameRequest {
    std::filesystem::path project;
    std::string path;
    std::string name;
};
ExitCode run(const RenameRequest& request, Session& session);

struct RemoveRequest {
    std::filesystem::path project;
    std::string path;
};
ExitCode run(const RemoveRequest& request, Session& session);

struct PluginsRequest {
    bool json = false;
};
ExitCode run(const PluginsRequest& request, Session& session);

} // namespace corvane::workbench::cli
