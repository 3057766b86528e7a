#include "workbench/cli/output/MemorySvg.hpp"
#include "workbench/cli/output/MemoryText.hpp"
#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/files/FileReplacement.hpp"

#include <optional>
#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

core::MemorySpace spaceAt(const core::Project& project, const std::string& path) {
    auto space = path == kProjectPath ? std::nullopt : core::memorySpaceOf(project.element(path));
    if (!space)
        throw std::runtime_error("“" + path + "” is no memory and lies in none");
    return *std::move(space);
}

void writeFile(const MemoryPicture& picture, const MapRequest& request) {
    core::replaceFile(*request.output, std::nullopt, [&](utils::io::OutputStream& stream) {
        if (!request.text)
            writeMemorySvg(picture, stream);
        else
            writeMemoryText(picture, [&](std::string_view line) {
                stream.write(line);
                stream.put('\n');
            });
    });
}

} // namespace

ExitCode run(const MapRequest& request, Session& session) {
    const auto project = session.open(request.project);
    const auto map = core::memoryMapOf(spaceAt(project, request.path));
    const MemoryPicture picture{map, request.width};
    auto& output = session.output();
    if (request.output)
        writeFile(picture, request);
    else if (request.text || output.goesToTerminal())
        writeMemoryText(picture, [&](std::string_view line) { output.writeLine(line); });
    else
        output.writeDocument([&](auto& stream) { writeMemorySvg(picture, stream); });
    return kDone;
}

} // namespace corvane::workbench::cli
