#include "workbench/cli/output/ProgressLine.hpp"
#include "workbench/cli/verbs/Preparing.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/files/FileReplacement.hpp"

#include <algorithm>
#include <stdexcept>
#include <system_error>

namespace corvane::workbench::cli {

namespace {

// A source is what the user has; what is made of it can be made again.
void expectNoSource(const std::filesystem::path& output,
                    const std::vector<std::filesystem::path>& files) {
    const bool isSource = std::ranges::any_of(files, [&](const std::filesystem::path& file) {
        std::error_code error;
        return equivalent(file, output, error);
    });
    if (isSource)
        throw std::runtime_error(output.string() +
                                 " is one of the files to prepare; name another one");
}

} // namespace

core::PreparedFiles prepare(const Session& session, std::vector<std::filesystem::path> files,
                            const PrepareOptions& options) {
    std::vector<ui::PrepareOption> wishes;
    if (options.standardAccess)
        wishes.push_back({.name = "standard-access", .value = {}});
    if (options.showHidden)
        wishes.push_back({.name = "show-hidden", .value = {}});
    for (const std::string& constant : options.constants)
        wishes.push_back({.name = "constant", .value = constant});
    for (const std::string& block : options.blocks)
        wishes.push_back({.name = "block", .value = block});
    auto prepared = core::prepareFiles(session.plugins(), std::move(files), wishes);
    for (const ui::LeftOutSource& leftOut : prepared.source.leftOut)
        printMessage(prepared.textOf(leftOut));
    return prepared;
}

ExitCode run(const PrepareRequest& request, Session& session) {
    if (request.output)
        expectNoSource(*request.output, request.files);
    const ProgressLine progress("Preparing " + request.files.front().string());
    const auto prepared = prepare(session, request.files, request.options);
    if (prepared.source.text.empty())
        throw std::runtime_error(std::string(kNothingPrepared));
    const auto write = [&](utils::io::OutputStream& stream) { stream.write(prepared.source.text); };
    if (request.output)
        core::replaceFile(*request.output, std::nullopt, write);
    else
        session.output().writeDocument(write);
    return kDone;
}

} // namespace corvane::workbench::cli
