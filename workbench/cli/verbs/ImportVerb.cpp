#include "workbench/cli/output/ImportFailurePrinter.hpp"
#include "workbench/cli/output/ProgressLine.hpp"
#include "workbench/cli/output/TreePrinter.hpp"
#include "workbench/cli/verbs/ImportReportPrinter.hpp"
#include "workbench/cli/verbs/ImportSummary.hpp"
#include "workbench/cli/verbs/Preparing.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <cstdint>
#include <expected>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace corvane::workbench::cli {

namespace {

/// The files, as the user named them.
std::string namesOf(const ImportRequest& request) {
    std::string names;
    for (const auto& file : request.files)
        names.append(names.empty() ? "" : ", ").append(file.string());
    return names;
}

/// A file that cannot be imported before any plug-in has looked at it, and what helps.
class RefusedFile : public std::runtime_error {
public:
    RefusedFile(const std::string& message, std::string_view hint)
        : std::runtime_error(message), hint_(hint) {}

    [[nodiscard]] std::string_view hint() const { return hint_; }

private:
    std::string_view hint_;
};

/// Throws that no button takes a file, or that there is no such file, which is then the reason.
[[noreturn]] void refuseFile(const std::filesystem::path& file, const std::string& refusal) {
    std::error_code error;
    const auto found = status(file, error);
    if (!exists(found))
        throw RefusedFile(std::system_error(error, file.string()).what(),
                          "there is no such file; check its name and its folder");
    throw RefusedFile(refusal, is_directory(found) ? "this is a folder; name a file in it" : "");
}

model::Element& newTarget(core::Project& project, const ImportRequest& request,
                          const std::string& extension) {
    auto* const target = core::addImportTarget(project, extension);
    if (target == nullptr)
        refuseFile(request.files.front(), "no loaded plug-in imports “" + extension + "” files");
    return *target;
}

model::Element& onlyTarget(core::Project& project, const ImportRequest& request,
                           const std::string& extension) {
    const auto targets = core::importTargets(project, extension);
    if (targets.empty())
        return newTarget(project, request, extension);
    if (targets.size() == 1)
        return *targets.front();
    std::string message = "several elements can import the file; name one with --at:";
    for (const auto* const target : targets)
        message += " " + target->path();
    throw std::runtime_error(message);
}

/// What is imported: a file as it is, or what was made of several.
struct Source {
    std::filesystem::path file; ///< the first one, if there are several
    std::string extension;
    std::optional<core::PreparedFiles> prepared = std::nullopt;

    /// The file in which this line stands that a plug-in has named, with the line there.
    [[nodiscard]] core::PreparedFiles::Place placeOf(std::optional<std::uint64_t> line) const {
        const auto origin = prepared ? prepared->originOf(line) : std::nullopt;
        return origin ? *origin
                      : core::PreparedFiles::Place{.file = file, .line = line.value_or(0)};
    }
};

Source sourceOf(const ImportRequest& request, const Session& session) {
    const auto& file = request.files.front();
    if (!request.prepare)
        return {.file = file, .extension = core::importExtensionOf(file)};
    auto prepared = prepare(session, request.files, request.prepareOptions);
    if (prepared.source.text.empty())
        throw std::runtime_error(std::string(kNothingPrepared));
    std::string extension = prepared.extension;
    return {.file = file, .extension = std::move(extension), .prepared = std::move(prepared)};
}

/// Says where in the user's files the warnings are, instead of in what was made of them; of each
/// the file, nothing where the one file is the user's.
std::vector<std::filesystem::path> leadToFiles(ui::ImportedDocument& document,
                                               const Source& source) {
    std::vector<std::filesystem::path> files;
    if (!source.prepared)
        return files;
    files.reserve(document.warnings.size());
    for (auto& warning : document.warnings) {
        auto origin = source.placeOf(warning.line);
        if (warning.line)
            warning.line = origin.line;
        warning.column.reset();
        files.push_back(std::move(origin.file));
    }
    return files;
}

/// What the button makes of the text that was prepared. The user knows nothing of the file in which
/// it stands meanwhile, and is told of his own.
std::expected<ui::ImportedDocument, ui::ImportFailure> pressPrepared(ui::PushButton& button,
                                                                     const Source& source) {
    using utils::string::detail::utf8ToUtf16;
    const core::ScratchFile scratch(source.prepared->source.text, source.extension);
    auto document = button.press(scratch.path());
    if (document)
        return document;
    auto& failure = document.error();
    const auto name = utf8ToUtf16(scratch.path().string());
    if (const auto at = failure.text.find(name); at != std::u16string::npos)
        failure.text.replace(at, name.size(), utf8ToUtf16(source.file.string()));
    failure.column.reset();
    return document;
}

/// Presses the button.
std::expected<ui::ImportedDocument, ui::ImportFailure> documentOf(const Source& source,
                                                                  model::Element& target) {
    const core::OpenForm form(target);
    auto* const button = form.importButton(source.extension);
    if (button == nullptr)
        refuseFile(source.file,
                   target.path() + " does not import “" + source.extension + "” files");
    return source.prepared ? pressPrepared(*button, source) : button->press(source.file);
}

core::Project openFor(const ImportRequest& request, const Session& session) {
    if (!request.project)
        return core::Project(session.plugins());
    const bool changes = !request.dryRun && !request.document;
    return changes ? session.openOrCreateToChange(*request.project)
                   : core::Project::openOrCreate(session.plugins(), *request.project);
}

void report(const ImportRequest& request, Session& session, const MergedImport& merged,
            const core::ImportCounts& counts) {
    auto& output = session.output();
    output.write("Imported " + namesOf(request) + " into ");
    if (!request.project) {
        output.writeLine("a new " + narrow(merged.target->elementClass().displayName()) +
                         ", which is only shown (--project FILE keeps it).");
        return;
    }
    output.writeLine(request.project->string() + ", " + merged.target->path() + ": " +
                     changesDone(counts) + ".");
    if (request.verbose)
        printChanges(output, merged, true);
}

void preview(const ImportRequest& request, Session& session, const MergedImport& merged) {
    session.output().writeLine("Importing " + namesOf(request) + " into " +
                               request.project->string() + ", " + merged.target->path() +
                               ", would change: " + changesToCome(merged.counts()) + ".");
    printChanges(session.output(), merged, request.verbose);
}

/// A failure that is not the plug-in's.
ui::ImportFailure ownFailure(std::string_view message, std::string_view hint = {}) {
    using utils::string::detail::utf8ToUtf16;
    ui::ImportFailure failure{.text = utf8ToUtf16(programMessage(message))};
    if (!hint.empty())
        failure.hint = utf8ToUtf16(hint);
    return failure;
}

ExitCode fail(const ImportRequest& request, Session& session, const std::filesystem::path& file,
              const ui::ImportFailure& failure) {
    printImportFailure(file, failure);
    if (request.json)
        writeImportFailure(session.output(), file, failure);
    return kFailed;
}

ExitCode fail(const ImportRequest& request, Session& session, const ui::ImportFailure& failure) {
    return fail(request, session, request.files.front(), failure);
}

/// A failure of the plug-in's, with its place in the user's files.
ExitCode fail(const ImportRequest& request, Session& session, const Source& source,
              ui::ImportFailure failure) {
    const auto place = source.placeOf(failure.line);
    if (failure.line)
        failure.line = place.line;
    return fail(request, session, place.file, failure);
}

ExitCode import(const ImportRequest& request, Session& session) {
    const Source source = sourceOf(request, session);
    auto project = openFor(request, session);
    const auto before = project.model().root().childElements().size();
    auto& target =
        request.at ? project.element(*request.at) : onlyTarget(project, request, source.extension);
    const bool isNew = project.model().root().childElements().size() != before;
    MergedImport merged{.file = source.file,
                        .target = &target,
                        .newTarget = isNew ? &target : nullptr,
                        .options = request.options,
                        .warningFiles = {}};
    core::ImportCounts counts;
    {
        const ProgressLine progress("Importing " + namesOf(request));
        auto document = documentOf(source, target);
        if (!document)
            return fail(request, session, source, document.error());
        merged.warningFiles = leadToFiles(*document, source);
        if (request.document) {
            session.output().writeDocument([&](auto& stream) {
                stream.write(document->text);
                stream.put('\n');
            });
            printFileWarnings(source.file, *document, merged.warningFiles);
            return kDone;
        }
        core::StagedImport staged(project, target, std::exchange(document->text, {}));
        merged.document = *std::move(document);
        merged.outcome = staged.merge(request.options, merged.changes);
        if (request.project && !request.dryRun) {
            counts = merged.counts();
            if (!counts.isNothing())
                session.save(project, *request.project);
        }
    }
    printFileWarnings(source.file, merged.document, merged.warningFiles);
    printMergeWarnings(merged);
    if (request.json) {
        writeImport(session.output(), merged);
        return kDone;
    }
    if (request.dryRun) {
        preview(request, session, merged);
        return kDone;
    }
    report(request, session, merged, counts);
    session.output().endLine();
    printImportSummary(session.output(), merged.document.memory, merged.outcome);
    if (!request.project) {
        session.output().endLine();
        printTree(session.output(), project.model().root().childElements());
    }
    return kDone;
}

} // namespace

ExitCode run(const ImportRequest& request, Session& session) try {
    return import(request, session);
} catch (const RefusedFile& refusal) {
    return fail(request, session, ownFailure(refusal.what(), refusal.hint()));
} catch (const std::exception& error) {
    return fail(request, session, ownFailure(session.tellingWhatWasSaved(error.what())));
} catch (...) { // of a plug-in that throws what is no exception
    return fail(request, session, ownFailure("unknown error"));
}

} // namespace corvane::workbench::cli
