#include "workbench/core/import/Preparation.hpp"

#include "workbench/core/files/FilePlace.hpp"
#include "workbench/core/files/TextFile.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <stdexcept>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace corvane::workbench::core {

namespace {

const ui::Preparer& preparerOf(const PluginHost& plugins,
                               std::span<const std::filesystem::path> files) {
    std::string refused = importExtensionOf(files.front());
    for (const LoadedSkill& skill : plugins.skills()) {
        const ui::Preparer* const preparer = skill.skillClass->preparer();
        if (preparer == nullptr)
            continue;
        const auto foreign = std::ranges::find_if(files, [&](const std::filesystem::path& file) {
            return std::ranges::find(preparer->extensions(), importExtensionOf(file)) ==
                   preparer->extensions().end();
        });
        if (foreign == files.end())
            return *preparer;
        refused = importExtensionOf(*foreign);
    }
    throw std::runtime_error("no loaded plug-in prepares “" + refused + "” files");
}

void expectKnown(const ui::Preparer& preparer, std::span<const ui::PrepareOption> options) {
    for (const ui::PrepareOption& option : options)
        if (std::ranges::find(preparer.options(), option.name) == preparer.options().end())
            throw std::runtime_error("the plug-in that prepares the files knows no option --" +
                                     option.name);
}

} // namespace

std::optional<PreparedFiles::Place>
PreparedFiles::originOf(std::optional<std::uint64_t> line) const {
    if (!line || *line == 0 || *line > source.origins.size())
        return std::nullopt;
    const ui::SourceOrigin origin = source.origins[*line - 1];
    return Place{.file = files[origin.file], .line = origin.line};
}

std::string PreparedFiles::textOf(const ui::LeftOutSource& leftOut) const {
    using utils::string::detail::utf16ToUtf8;
    std::string text = files[leftOut.file].string();
    if (leftOut.line)
        text.append(":").append(std::to_string(*leftOut.line));
    if (leftOut.line && leftOut.column)
        text.append(":").append(std::to_string(*leftOut.column));
    text.append(": left out");
    if (!leftOut.name.empty())
        text.append(" “").append(leftOut.name).append("”");
    return text.append(": ")
        .append(utf16ToUtf8(leftOut.reason))
        .append("; ")
        .append(utf16ToUtf8(leftOut.help));
}

PreparedFiles prepareFiles(const PluginHost& plugins, std::vector<std::filesystem::path> files,
                           std::span<const ui::PrepareOption> options) {
    std::vector<ui::SourceFile> sources;
    sources.reserve(files.size());
    for (const std::filesystem::path& file : files)
        sources.push_back({.name = file.string(), .bytes = readTextFile(file)});
    const ui::Preparer& preparer = preparerOf(plugins, files);
    expectKnown(preparer, options);
    return {.files = std::move(files),
            .source = preparer.prepare(sources, options),
            .extension = std::string(preparer.preparedExtension())};
}

ScratchFile::ScratchFile(std::string_view text, std::string_view extension) {
    std::string name = (std::filesystem::temp_directory_path() / "corvane-XXXXXX").string();
    name.append(extension);
    const Descriptor file(::mkostemps(name.data(), static_cast<int>(extension.size()), O_CLOEXEC));
    if (!file.isOpen())
        throw std::system_error(errno, std::generic_category(), name);
    path_ = name;
    while (!text.empty()) {
        const auto written = ::write(file.number(), text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0) {
            const int error = errno;
            ::unlink(path_.c_str());
            throw std::system_error(error, std::generic_category(), name);
        }
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

ScratchFile::~ScratchFile() { ::unlink(path_.c_str()); }

} // namespace corvane::workbench::core
