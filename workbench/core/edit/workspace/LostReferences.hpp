#pragma once

#include "workbench/core/edit/workspace/Placement.hpp"

#include <span>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// A reference that an edit has left without its element.
struct LostReference {
    model::Element* holder; // the element that refers
    std::string text;       // the path that it keeps, and by which it finds its element again
};

/// The references from what stays in the tree below `root` to what stands at the placements, or
/// below it, in the order of the tree: they lose their elements when those are taken out.
[[nodiscard]] std::vector<LostReference> lostReferences(std::span<const Placement> placements,
                                                        const model::Element& root);

} // namespace corvane::workbench::core
