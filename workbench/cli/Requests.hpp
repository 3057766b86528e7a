#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What a user asks for on the command line, one structure for each verb.
namespace corvane::workbench::cli {

struct ImportRequest {
    std::filesystem::path file;
    std::optional<std::filesystem::path> project;
    std::optional<std::string> at; // path of the element to import into
    bool document = false;         // print the document and change nothing
    bool dryRun = false;           // tell what would change and save nothing
};

struct ShowRequest {
    std::filesystem::path project;
    std::optional<std::string> path; // the whole project without it
    bool json = false;
};

struct MembersRequest {
    std::filesystem::path project;
    std::string path;
    bool json = false;
};

struct CheckRequest {
    std::filesystem::path project;
    bool json = false;
};

struct FormRequest {
    std::filesystem::path project;
    std::string path;
    bool json = false;
};

struct SetRequest {
    std::filesystem::path project;
    std::string path;
    std::vector<std::string> values; // "LABEL=VALUE", each label once
};

struct AddRequest {
    std::filesystem::path project;
    std::string path; // of the parent
    std::string elementClass;
    std::string name; // the class's own without it
};

struct RenameRequest {
    std::filesystem::path project;
    std::string path;
    std::string name;
};

struct RemoveRequest {
    std::filesystem::path project;
    std::string path;
};

struct PluginsRequest {
    bool json = false;
};

} // namespace corvane::workbench::cli
