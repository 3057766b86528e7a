#pragma once

#include "workbench/core/edit/steps/Step.hpp"
#include "workbench/core/edit/workspace/Findings.hpp"

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace corvane::workbench::core {

/// Elements that come to stand elsewhere.
///
/// What a skill element knows of its place it has learnt while it was loaded there. One that gets
/// another parent is therefore replaced by one that is loaded anew, from the document that saving
/// it writes, at the place where it shall stand: the project is then what saving it and loading it
/// again would give. The old one is kept, for it knows the old place.
class MoveStep final : public Step {
public:
    /// `elements` stand in `model`, not below each other, and are accepted by `parent`. They shall
    /// stand in front of its child at `position`.
    MoveStep(std::span<model::Element* const> elements, host::Model& model, model::Element& parent,
             std::size_t position);

    bool perform(Workspace& workspace) override;
    void undo(Workspace& workspace) override;
    void redo(Workspace& workspace) override;

private:
    /// The old place of some of the elements.
    struct Source {
        model::Element* parent;
        std::vector<std::size_t> positions;
        std::vector<model::Element*> elements; // in the order of the positions
    };

    [[nodiscard]] bool isNothing() const;
    void moveThere(Workspace& workspace, function_ref<void()> exchange);
    void exchangeSkillElements();

    std::vector<model::Element*> moved_; // in their order
    std::vector<std::string> names_;     // theirs, before the move
    std::vector<Source> sources_;
    model::Element* parent_;
    std::vector<std::size_t> positions_; // the new ones
    /// The skill elements that do not belong to the present place.
    std::vector<std::pair<model::Element*, std::unique_ptr<skill::Element>>> others_;
    bool referenced_ = false; // something that gets another parent, or what is below it
    Findings findings_;
};

} // namespace corvane::workbench::core
