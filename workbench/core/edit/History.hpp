#pragma once

#include "workbench/core/Editor.hpp"
#include "workbench/core/edit/Step.hpp"

#include <optional>

namespace corvane::workbench::core {

/// The steps of an editor: those that are done, and those that were undone and can be redone.
class Editor::History {
public:
    explicit History(Project& project) : workspace(project) {}

    /// Takes a step that was just done; what could be redone until now no longer can. Null is no
    /// step.
    void push(std::unique_ptr<Step> step);

    /// The step that would be undone or redone next; null if there is none.
    [[nodiscard]] Step* undoable() const;
    [[nodiscard]] Step* redoable() const;
    void undo();
    void redo();

    [[nodiscard]] bool isSaved() const { return saved_ == done_; }
    void markSaved();

    Workspace workspace;

private:
    void tellChanged() const;

    std::vector<std::unique_ptr<Step>> steps_;
    std::size_t done_ = 0;
    std::optional<std::size_t> saved_ = 0; // steps done when saved; empty if never to be again
};

} // namespace corvane::workbench::core
