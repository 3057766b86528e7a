#pragma once

#include "workbench/core/plugins/PluginHost.hpp"

#include <corvane/workbench/ui/Preparer.hpp>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

/// Files that a plug-in has made importable, and what it left out.
struct PreparedFiles {
    /// A place in one of the files.
    struct Place {
        std::filesystem::path file;
        std::uint64_t line; ///< from 1
    };

    std::vector<std::filesystem::path> files;
    ui::PreparedSource source;
    std::string extension; ///< of the text that was made, ".db"

    /// Where a line of the text comes from; empty for a line that there is not.
    [[nodiscard]] std::optional<Place> originOf(std::optional<std::uint64_t> line) const;

    /// Something that was left out, as a user reads it: FILE:LINE:COLUMN, what, why and what helps.
    [[nodiscard]] std::string textOf(const ui::LeftOutSource& leftOut) const;
};

/// Prepares files, all together. Throws std::runtime_error where no loaded plug-in prepares all of
/// them or knows all of the options, and what reading the files throws.
[[nodiscard]] PreparedFiles prepareFiles(const PluginHost& plugins,
                                         std::vector<std::filesystem::path> files,
                                         std::span<const ui::PrepareOption> options);

/// A file for a text that somebody wants as one, out of the way of all others and gone with the
/// object.
class ScratchFile {
public:
    /// Throws std::system_error.
    ScratchFile(std::string_view text, std::string_view extension);
    ScratchFile(const ScratchFile&) = delete;
    ScratchFile& operator=(const ScratchFile&) = delete;
    ~ScratchFile();

    [[nodiscard]] const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

} // namespace corvane::workbench::core
