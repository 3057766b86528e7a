#pragma once

#include "workbench/core/memory/MemoryWarnings.hpp"
#include "workbench/core/project/FieldRemarks.hpp"
#include "workbench/gui/problems/Problem.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <cstddef>
#include <utility>
#include <vector>

namespace corvane::workbench::gui {

/// Looks for what is suspicious in a project, a little at each call, so that it can be done between
/// events. The project must not change from the first step to the last.
class WarningLookup {
public:
    explicit WarningLookup(const model::Element& root) : walk_(root) {}

    /// True when nothing is left to do.
    bool step();

    [[nodiscard]] std::size_t total() const { return total_; }
    [[nodiscard]] std::vector<Problem> takeListed();

private:
    bool walkOn();
    void noteRemarks(model::Element& element);
    bool list();

    TreeWalk walk_;
    core::FieldRemarks remarks_;
    std::vector<Problem> remarked_;
    core::MemoryWarningSearch search_;
    std::vector<core::MemoryWarning> found_;
    std::vector<Problem> listed_;
    std::size_t total_ = 0;
    enum class Stage : std::uint8_t { walking, looking, listing } stage_ = Stage::walking;
};

} // namespace corvane::workbench::gui
