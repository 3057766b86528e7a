#pragma once

#include <corvane/workbench/host/ReferenceLog.hpp>
#include <corvane/workbench/host/Staging.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <memory>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// What an import did to a project.
struct ImportOutcome {
    /// The elements at the top of the document, where they stand now, in the document's order.
    std::vector<model::Element*> top;
    std::size_t added = 0;
    std::size_t replaced = 0;
    /// The elements that took the place of existing ones.
    std::vector<model::Element*> successors;
};

/// What an import changed, piece by piece and in its order, for who wants to tell of it or to take
/// it back.
struct ImportChanges {
    struct Replacement {
        model::Element* element;
        std::unique_ptr<skill::Element> replaced; // what the element was before
    };
    struct Renaming {
        model::Element* element;
        std::string before;
        std::string after;
    };
    /// The last children of an element, as many as were appended.
    struct Appending {
        model::Element* parent;
        std::size_t first;
        std::size_t count;
    };
    std::vector<Replacement> replacements;
    std::vector<Renaming> renamings;
    std::vector<Appending> appendings; // not those within others
    host::ReferenceLog found;          // references that had waited for what came
};

/// Merges what is staged into the tree below the staging's target.
///
/// Level by level, each staged element is paired with the existing sibling of its class that has
/// its `importId`: by preference the one of its own name, else the first that is not paired yet. A
/// paired element replaces the existing one in its place and under its identity; the rest is
/// appended. Where a new element's name is taken by another element that stays, it gets the next
/// free one, or takes the place of the element that got that name from it in an earlier import.
///
/// Each change is noted in `changes`, where there is one, as soon as it is made: what is thrown
/// half-way (by a plug-in, or for want of memory) leaves a note of all that has to be taken back.
[[nodiscard]] ImportOutcome mergeStaged(host::Staging& staging, ImportChanges* changes = nullptr);

} // namespace corvane::workbench::core
