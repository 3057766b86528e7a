#include "workbench/core/edit/steps/StepGroup.hpp"

#include <ranges>

namespace corvane::workbench::core {

namespace {

/// After so many steps whoever waits is told.
constexpr std::size_t kTellEvery = 256;

} // namespace

void StepGroup::add(std::shared_ptr<Step> step) {
    if (text().empty())
        setText(step->text());
    steps_.push_back(std::move(step));
}

bool StepGroup::perform(Workspace&) { return !steps_.empty(); }

void StepGroup::undo(Workspace& workspace) {
    std::size_t done = 0;
    for (const auto& step : std::views::reverse(steps_)) {
        step->undo(workspace);
        tell(workspace, ++done);
    }
}

void StepGroup::redo(Workspace& workspace) {
    std::size_t done = 0;
    for (const auto& step : steps_) {
        step->redo(workspace);
        tell(workspace, ++done);
    }
}

void StepGroup::tell(const Workspace& workspace, std::size_t done) const {
    if (done % kTellEvery == 0)
        workspace.tellProgressOnly(done, steps_.size());
}

} // namespace corvane::workbench::core
