#include "workbench/cli/ImportPreview.hpp"
#include "workbench/cli/ImportSummary.hpp"
#include "workbench/cli/ProgressLine.hpp"
#include "workbench/cli/Session.hpp"
#include "workbench/cli/TextOutput.hpp"
#include "workbench/cli/TreePrinter.hpp"
#include "workbench/cli/Verbs.hpp"
#include "workbench/core/OpenForm.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <algorithm>
#include <iostream>
#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

/// The extension by which buttons are told what a file is; its case does not matter.
std::string extensionOf(const std::filesystem::path& file) {
    auto extension = file.extension().string();
    std::ranges::transform(extension, extension.begin(), [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    });
    return extension;
}

model::Element& newTarget(core::Project& project, const std::string& extension) {
    auto* const target = core::addImportTarget(project, extension);
    if (target == nullptr)
        throw std::runtime_error("no loaded plug-in imports \"" + extension + "\" files");
    return *target;
}

model::Element& onlyTarget(core::Project& project, const std::string& extension) {
    const auto targets = core::importTargets(project, extension);
    if (targets.empty())
        return newTarget(project, extension);
    if (targets.size() == 1)
        return *targets.front();
    std::string message = "several elements can import the file; name one with --at:";
    for (const auto* const target : targets)
        message += " " + target->path();
    throw std::runtime_error(message);
}

/// Presses the button; null after the plug-in's text, which stands alone on its line so that
/// programs can read it, was printed.
std::optional<ui::ImportedDocument> documentOf(const ImportRequest& request, model::Element& target,
                                               const std::string& extension) {
    const core::OpenForm form(target);
    auto* const button = form.importButton(extension);
    if (button == nullptr)
        throw std::runtime_error(target.path() + " does not import \"" + extension + "\" files");
    auto document = button->press(request.file);
    if (document)
        return *std::move(document);
    std::cerr << narrow(document.error()) << '\n';
    return std::nullopt;
}

void report(const ImportRequest& request, Session& session, const model::Element& target,
            const ui::ImportedDocument& document, const core::ImportOutcome& outcome) {
    auto& output = session.output();
    output.write("Imported " + request.file.string() + " into ");
    if (request.project)
        output.write(request.project->string() + ", " + printable(target.path()) + ": " +
                     std::to_string(outcome.added) +
                     (outcome.added == 1 ? " element added, " : " elements added, ") +
                     std::to_string(outcome.replaced) + " updated.\n\n");
    else
        output.write("a new " + narrow(target.elementClass().displayName()) +
                     ", which is only shown (--project FILE keeps it).\n\n");
    printImportSummary(output, document.memory, outcome);
}

void preview(const ImportRequest& request, Session& session, const model::Element& target,
             const core::ImportChanges& changes, bool targetIsNew) {
    auto& output = session.output();
    output.write("Importing " + request.file.string() + " into " + request.project->string() +
                 ", " + printable(target.path()) + ", would change: ");
    printImportPreview(output, changes, targetIsNew ? &target : nullptr);
}

} // namespace

ExitCode run(const ImportRequest& request, Session& session) {
    const auto extension = extensionOf(request.file);
    auto project = request.project
                       ? core::Project::openOrCreate(session.plugins(), *request.project)
                       : core::Project(session.plugins());
    const auto before = project.model().root().childElements().size();
    auto& target = request.at ? project.element(*request.at) : onlyTarget(project, extension);

    std::optional<ui::ImportedDocument> document;
    core::ImportOutcome outcome;
    core::ImportChanges changes;
    {
        const ProgressLine progress("Importing " + request.file.string());
        document = documentOf(request, target, extension);
        if (!document)
            return kFailed;
        if (request.document) {
            session.output().write(document->text);
            session.output().put('\n');
            return kDone;
        }
        if (!request.dryRun)
            outcome = core::importDocument(project, target, std::move(document->text));
        else
            static_cast<void>(
                core::StagedImport(project, target, std::move(document->text)).merge(&changes));
        if (request.project && !request.dryRun)
            project.save();
    }
    if (request.dryRun) {
        preview(request, session, target, changes,
                project.model().root().childElements().size() != before);
        return kDone;
    }
    report(request, session, target, *document, outcome);
    if (!request.project) {
        session.output().put('\n');
        printTree(session.output(), project.model().root().childElements());
    }
    return kDone;
}

} // namespace corvane::workbench::cli
