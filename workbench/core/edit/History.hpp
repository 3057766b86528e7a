#pragma once

#include "workbench/core/edit/Editor.hpp"
#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/steps/StepGroup.hpp"

#include <memory>
#include <optional>
#include <vector>

namespace corvane::workbench::core {

/// The steps of an editor: those that are done, and those that were undone and can be redone.
class Editor::History {
public:
    explicit History(Project& project) : workspace(project) {}

    /// Performs a step and keeps it where it changed anything; what could be redone until now no
    /// longer can then.
    void perform(std::shared_ptr<Step> step);
    /// Performs the steps that `edits` performs, and keeps them as one.
    void performTogether(std::u16string text, function_ref<void()> edits);

    [[nodiscard]] std::size_t stepsDone() const { return done_; }
    /// The step that would be undone or redone next; null if there is none.
    [[nodiscard]] Step* undoable() const;
    [[nodiscard]] Step* redoable() const;
    /// Does so; without such a step nothing happens. The observer learns of it afterwards.
    void undo();
    void redo();

    /// Whether the steps that are done are those that were done when the project was saved.
    [[nodiscard]] bool isSaved() const { return saved_ == done_; }
    void markSaved();

    /// What the steps work on.
    Workspace workspace;

private:
    void keep(std::shared_ptr<Step> step);
    void tellChanged() const;

    std::vector<std::shared_ptr<Step>> steps_;
    std::size_t done_ = 0;
    std::optional<std::size_t> saved_ = 0; // steps done when saved; empty if never to be again
    StepGroup* group_ = nullptr;           // takes what is performed meanwhile
};

} // namespace corvane::workbench::core
