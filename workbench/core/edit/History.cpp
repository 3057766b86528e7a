#include "workbench/core/edit/History.hpp"

#include <exception>
#include <utility>

namespace corvane::workbench::core {

void Editor::History::perform(std::shared_ptr<Step> step) {
    if (!step->perform(workspace))
        return;
    if (group_ != nullptr)
        group_->add(std::move(step));
    else
        keep(std::move(step));
}

void Editor::History::performTogether(std::u16string text, function_ref<void()> edits) {
    if (group_ != nullptr) { // a part of what is under way
        edits();
        return;
    }
    const auto group = std::make_shared<StepGroup>(std::move(text));
    auto progress = workspace.setProgress({});
    group_ = group.get();
    std::exception_ptr failure;
    try {
        edits();
    } catch (...) {
        failure = std::current_exception();
        group->undo(workspace);
    }
    group_ = nullptr;
    workspace.setProgress(std::move(progress));
    if (failure)
        std::rethrow_exception(failure);
    if (group->perform(workspace))
        keep(group);
}

void Editor::History::keep(std::shared_ptr<Step> step) {
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
