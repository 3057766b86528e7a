#include "workbench/core/edit/steps/ImportStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/host/Tree.hpp>

#include <algorithm>
#include <iterator>
#include <ranges>
#include <unordered_set>
#include <utility>

namespace corvane::workbench::core {

namespace {

using Renamings = std::vector<ImportChanges::Renaming>;

void rename(const Renamings& renamings, std::string ImportChanges::Renaming::* name) {
    std::vector<host::NewName> names;
    names.reserve(renamings.size());
    for (const auto& renaming : renamings)
        names.push_back({renaming.element, renaming.*name});
    host::renameAll(names);
}

/// What an import has left alone below elements that it has moved: what came from there, such as a
/// number that counts for all below, may be another now.
class KeptElements {
public:
    explicit KeptElements(const ImportChanges& changes) {
        for (const auto& replacement : changes.replacements)
            replaced_.insert(replacement.element);
        for (const auto& [parent, count] : changes.appendings)
            for (const auto& child : parent->childElements().last(count))
                done_.insert(child.get());
        for (const auto& replacement : changes.replacements)
            if (replacement.moved)
                collect(*replacement.element);
    }

    /// Of each parent its elements, which follow one another.
    [[nodiscard]] const std::vector<std::vector<model::Element*>>& levels() const {
        return levels_;
    }

private:
    // As deep as elements nest, which the host bounds.
    void collect(const model::Element& parent) {
        std::vector<model::Element*> kept;
        for (const auto& child : parent.childElements()) {
            if (replaced_.contains(child.get()))
                collect(*child);
            else if (done_.insert(child.get()).second)
                kept.push_back(child.get());
        }
        if (!kept.empty())
            levels_.push_back(std::move(kept));
    }

    std::unordered_set<const model::Element*> replaced_;
    std::unordered_set<const model::Element*> done_; // new, or kept and known to be
    std::vector<std::vector<model::Element*>> levels_;
};

bool movesWhatHasChildren(const ImportChanges& changes) {
    return std::ranges::any_of(changes.replacements, [](const auto& replacement) {
        return replacement.moved && !replacement.element->childElements().empty();
    });
}

} // namespace

ImportStep::ImportStep(model::Element& target, StagedImport& staged, const ImportOptions& options)
    : Step(editText("Import into “{}”", {utils::string::detail::utf8ToUtf16(target.name())})),
      target_(&target),
      staged_(&staged),
      options_(options) {}

// Where nothing has changed, the elements keep what they are made of, too: it is what the other
// steps know.
bool ImportStep::perform(Workspace& workspace) {
    workspace.reset(*target_, [&] {
        merge(workspace, [&] {
            counts_ = countImported(changes_, options_.match);
            warnings_ = mergeWarnings(changes_);
        });
        if (counts_.isNothing())
            takeBack(workspace);
    });
    return !counts_.isNothing();
}

ImportPreview ImportStep::preview(Workspace& workspace) {
    ImportPreview preview;
    workspace.reset(*target_, [&] {
        merge(workspace, [&] {
            preview = previewOf(changes_, outcome_, *target_, options_.match,
                                [&] { workspace.tellProgress(kPreviewMerged, kPreviewParts); });
        });
        takeBack(workspace);
    });
    return preview;
}

void ImportStep::merge(Workspace& workspace, function_ref<void()> look) {
    try {
        outcome_ = std::exchange(staged_, nullptr)->merge(options_, changes_);
        renewKept(workspace);
        look();
        prepareWayBack();
    } catch (...) {
        prepareWayBack();
        takeBack(workspace);
        throw;
    }
}

void ImportStep::renewKept(Workspace& workspace) {
    if (!movesWhatHasChildren(changes_))
        return;
    const KeptElements kept(changes_);
    for (const auto& level : kept.levels()) {
        auto others =
            StagedMove(workspace.project(), level, *level.front()->parentElement()).adopt();
        std::ranges::move(others, std::back_inserter(renewed_));
    }
}

void ImportStep::prepareWayBack() {
    findings_ = Findings(std::move(changes_.found));
    for (const auto& [parent, count] : changes_.appendings) {
        const auto end = parent->childElements().size();
        std::vector<std::size_t> positions;
        positions.reserve(count);
        for (auto position = end - count; position != end; ++position)
            positions.push_back(position);
        placements_.emplace_back(*parent, std::move(positions));
    }
    for (auto& removal : changes_.removals)
        removals_.emplace_back(std::move(removal));
}

void ImportStep::undo(Workspace& workspace) {
    workspace.reset(*target_, [&] { takeBack(workspace); });
}

void ImportStep::redo(Workspace& workspace) {
    workspace.reset(*target_, [&] { makeAgain(workspace); });
}

void ImportStep::takeBack(Workspace& workspace) {
    bool changed = findings_.takeBack(workspace);
    for (auto& placement : std::views::reverse(placements_))
        changed = placement.takeOut(workspace) || changed;
    for (auto& removal : std::views::reverse(removals_))
        changed = removal.putBack(workspace) || changed;
    rename(changes_.renamings, &ImportChanges::Renaming::before);
    exchangeSkillElements();
    if (changed)
        workspace.validateReferences();
}

void ImportStep::makeAgain(Workspace& workspace) {
    exchangeSkillElements();
    rename(changes_.renamings, &ImportChanges::Renaming::after);
    bool changed = false;
    for (auto& removal : removals_)
        changed = removal.takeOut(workspace) || changed;
    for (auto& placement : placements_)
        changed = placement.putBack(workspace) || changed;
    if (findings_.make(workspace) || changed)
        workspace.validateReferences();
}

void ImportStep::exchangeSkillElements() {
    for (auto& replacement : changes_.replacements)
        host::swapSkillElement(*replacement.element, replacement.replaced);
    for (auto& [element, other] : renewed_)
        host::swapSkillElement(*element, other);
}

} // namespace corvane::workbench::core
