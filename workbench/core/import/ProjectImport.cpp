#include "workbench/core/import/ProjectImport.hpp"

#include "workbench/core/import/MissingElements.hpp"
#include "workbench/core/project/DocumentReader.hpp"
#include "workbench/core/project/ElementWalk.hpp"

namespace corvane::workbench::core {

namespace {

namespace decoder = utils::json::decoder;

void readStaged(DocumentReader reader, std::string text, host::Staging& staging) {
    decoder::Document document(std::move(text));
    reader.readStaged(document.root().asArray(), staging);
    document.expectEnd();
}

// A path is looked for in the project, a bare name at the top of the document.
model::Element* findTarget(const host::Model& model, const host::Staging& staging,
                           std::string_view text) {
    if (text.starts_with('/'))
        return model.findElement(text);
    return staging.find(model::unescapeName(text));
}

// What an element took over from the one that it replaced, and what has come into being since it
// was published, may have changed what its validators say.
void publishChanges(Project& project, const ImportOutcome& outcome, host::ReferenceLog* found) {
    for (auto* const element : outcome.successors)
        element->getSkillElement()->publishConfigured();
    if (project.model().resolveReferences(found))
        validateReferences(project.model().root().childElements());
}

} // namespace

StagedImport::StagedImport(Project& project, model::Element& target, std::string document,
                           Depth depth)
    : project_(&project), staging_(target) {
    readStaged(DocumentReader(project.plugins(), references_, depth == Depth::all),
               std::move(document), staging_);
    references_.resolve(
        [&](std::string_view text) { return findTarget(project.model(), staging_, text); });
    configureAndPublish(staging_.elements());
}

ImportOutcome StagedImport::merge(const ImportOptions& options, ImportChanges& changes) {
    auto outcome = merge(options.match, &changes);
    if (options.removeMissing && removeMissing(project_->model(), options.match, changes))
        validateReferences(project_->model().root().childElements());
    return outcome;
}

ImportOutcome StagedImport::merge() { return merge(Match::identity, nullptr); }

ImportOutcome StagedImport::merge(Match match, ImportChanges* changes) {
    auto outcome = mergeStaged(staging_, match, changes);
    project_->model().references().takeOver(references_);
    publishChanges(*project_, outcome, changes == nullptr ? nullptr : &changes->found);
    return outcome;
}

ImportOutcome importDocument(Project& project, model::Element& target, std::string document) {
    return StagedImport(project, target, std::move(document)).merge();
}

} // namespace corvane::workbench::core
