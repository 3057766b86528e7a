#include "workbench/core/edit/History.hpp"

namespace corvane::workbench::core {

void Editor::History::perform(std::shared_ptr<Step> step) {
    if (!step->perform(workspace))
        return;
    steps_.resize(done_);
    if (saved_ > done_)
        saved_.reset();
    steps_.push_back(std::move(step));
    ++done_;
    tellChanged();
}

Step* Editor::History::undoable() const { return done_ == 0 ? nullptr : steps_[done_ - 1].get(); }

Step* Editor::History::redoable() const {
    return done_ == steps_.size() ? nullptr : steps_[done_].get();
}

void Editor::History::undo() {
    if (auto* const step = undoable()) {
        step->undo(workspace);
        --done_;
        tellChanged();
    }
}

void Editor::History::redo() {
    if (auto* const step = redoable()) {
        step->redo(workspace);
        ++done_;
        tellChanged();
    }
}

void Editor::History::markSaved() {
    saved_ = done_;
    tellChanged();
}

void Editor::History::tellChanged() const {
    workspace.tell([](auto& observer) { observer.historyChanged(); });
}

} // namespace corvane::workbench::core
