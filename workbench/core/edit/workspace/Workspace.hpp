#pragma once

#include "workbench/core/edit/workspace/EditObserver.hpp"
#include "workbench/core/project/Project.hpp"

#include <corvane/workbench/function_ref.hpp>
#include <corvane/workbench/host/ReferenceLog.hpp>

#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace corvane::workbench::core {

/// What the steps of an editor work on: the project, and the observer who learns of each change.
class Workspace {
public:
    explicit Workspace(Project& project) : project_(&project) {}

    [[nodiscard]] Project& project() const { return *project_; }
    [[nodiscard]] host::Model& model() const { return project_->model(); }
    void setObserver(EditObserver* observer) { observer_ = observer; }

    /// Told how many of how many elements are done by a step that takes long; false stops it.
    using Progress = std::function<bool(std::size_t done, std::size_t total)>;
    /// Gives back what was told before.
    Progress setProgress(Progress progress) {
        return std::exchange(progress_, std::move(progress));
    }
    /// Throws EditStopped where the step shall stop.
    void tellProgress(std::size_t done, std::size_t total) const;
    /// Likewise of what cannot be stopped.
    void tellProgressOnly(std::size_t done, std::size_t total) const;

    /// Calls `notify` with the observer, unless there is none, or a reset that is under way will
    /// tell it of everything.
    void tell(function_ref<void(EditObserver&)> notify) const {
        if (observer_ != nullptr && !resetting_)
            notify(*observer_);
    }

    /// As Element::takeChildren and Element::putChildren, with the observer told of each run of
    /// neighbours, or of a reset of the parent where there are so many that each would cost it more
    /// than looking anew.
    [[nodiscard]] std::vector<std::unique_ptr<model::Element>>
    take(model::Element& parent, std::span<const std::size_t> positions);
    void put(model::Element& parent, std::vector<std::unique_ptr<model::Element>> children,
             std::span<const std::size_t> positions);

    /// Makes changes at and below an element, of which the observer learns as a reset.
    void reset(model::Element& element, function_ref<void()> change);

    /// Validates all references of the project again.
    void validateReferences() const;

private:
    Project* project_;
    EditObserver* observer_ = nullptr;
    Progress progress_;
    bool resetting_ = false;
};

} // namespace corvane::workbench::core
