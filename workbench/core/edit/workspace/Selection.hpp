#pragma once

#include "workbench/core/edit/workspace/Placement.hpp"

#include <corvane/workbench/host/Model.hpp>

#include <span>
#include <vector>

namespace corvane::workbench::core {

/// The elements of a selection that do not stand below others of it, each once, in the selection's
/// order.
[[nodiscard]] std::vector<model::Element*> topmostOf(std::span<model::Element* const> selection);

/// Where such elements stand: a placement for each parent, parents in the order in which the
/// elements name them.
[[nodiscard]] std::vector<Placement> placementsOf(std::span<model::Element* const> topmost,
                                                  host::Model& model);

} // namespace corvane::workbench::core
