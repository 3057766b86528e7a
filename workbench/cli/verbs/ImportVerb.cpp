#include "workbench/cli/output/ImportFailurePrinter.hpp"
#include "workbench/cli/output/ProgressLine.hpp"
#include "workbench/cli/output/TreePrinter.hpp"
#include "workbench/cli/verbs/ImportReportPrinter.hpp"
#include "workbench/cli/verbs/ImportSummary.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <expected>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace corvane::workbench::cli {

namespace {

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
        refuseFile(request.file, "no loaded plug-in imports “" + extension + "” files");
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

/// Presses the button.
std::expected<ui::ImportedDocument, ui::ImportFailure>
documentOf(const ImportRequest& request, model::Element& target, const std::string& extension) {
    const core::OpenForm form(target);
    auto* const button = form.importButton(extension);
    if (button == nullptr)
        refuseFile(request.file, target.path() + " does not import “" + extension + "” files");
    return button->press(request.file);
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
    output.write("Imported " + request.file.string() + " into ");
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
    session.output().writeLine("Importing " + request.file.string() + " into " +
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

ExitCode fail(const ImportRequest& request, Session& session, const ui::ImportFailure& failure) {
    printImportFailure(request.file, failure);
    if (request.json)
        writeImportFailure(session.output(), request.file, failure);
    return kFailed;
}

ExitCode import(const ImportRequest& request, Session& session) {
    const auto extension = core::importExtensionOf(request.file);
    auto project = openFor(request, session);
    const auto before = project.model().root().childElements().size();
    auto& target =
        request.at ? project.element(*request.at) : onlyTarget(project, request, extension);
    const bool isNew = project.model().root().childElements().size() != before;
    MergedImport merged{.file = request.file,
                        .target = &target,
                        .newTarget = isNew ? &target : nullptr,
                        .options = request.options};
    core::ImportCounts counts;
    {
        const ProgressLine progress("Importing " + request.file.string());
        auto document = documentOf(request, target, extension);
        if (!document)
            return fail(request, session, document.error());
        if (request.document) {
            session.output().writeDocument([&](auto& stream) {
                stream.write(document->text);
                stream.put('\n');
            });
            printFileWarnings(request.file, *document);
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
    printFileWarnings(request.file, merged.document);
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
