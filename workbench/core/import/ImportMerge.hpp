#pragma once

#include <corvane/workbench/host/ReferenceLog.hpp>
#include <corvane/workbench/host/Staging.hpp>
#include <corvane/workbench/model/Element.hpp>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// By what an imported element is known to be one that exists.
enum class Match : std::uint8_t {
    identity, ///< by the `importId` that both state, whatever they are called
    path,     ///< by name and class, level by level: by their paths below the target
};

/// What the user may ask of an import.
struct ImportOptions {
    Match match = Match::identity;
    /// Whether what is missing from the document is removed; `missingElements` says what that is.
    bool removeMissing = false;
};

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
        bool moved; // whether that had another identity: only elements matched by path can have
    };
    struct Renaming {
        model::Element* element;
        std::string before;
        std::string after;
        std::string nameInDocument; // the name after, unless that was taken
    };
    /// The last children of an element, as many as were appended.
    struct Appending {
        model::Element* parent;
        std::size_t count;
    };
    /// An element that is called otherwise than in the document.
    struct Misnaming {
        model::Element* element;
        std::string nameInDocument;
    };
    /// Children that were taken out of the tree, and stood at these positions.
    struct Removal {
        model::Element* parent;
        std::vector<std::size_t> positions; // ascending
        std::vector<std::unique_ptr<model::Element>> elements;
        host::ReferenceLog lost; // the references to them and to what is below them
    };
    std::vector<Replacement> replacements;
    std::vector<Renaming> renamings;
    std::vector<Appending> appendings; // not those within others
    /// Elements that were there before and that nothing in the document was paired with, though
    /// something was with their parents; not those below them, and none at the top.
    std::vector<model::Element*> unmet;
    std::vector<Removal> removals;
    /// Elements that kept their names while the document has these for others beside them.
    std::vector<Misnaming> misleading;
    /// New elements that got other names, since theirs were taken.
    std::vector<Misnaming> renumbered;
    host::ReferenceLog found; // references that had waited for what came
};

/// Merges what is staged into the tree below the staging's target.
///
/// Level by level, each staged element is paired with the existing sibling of its class that has
/// its `importId`: by preference the one of its own name, else the first that is not paired yet;
/// or, where they are matched by path, with the one of its class and name. A paired element
/// replaces the existing one in its place and under its identity; the rest is appended. Where a new
/// element's name is taken by another element that stays, it gets the next free one, or takes the
/// place of the element that got that name from it in an earlier import.
///
/// Each change is noted in `changes`, where there is one, as soon as it is made: what is thrown
/// half-way (by a plug-in, or for want of memory) leaves a note of all that has to be taken back.
[[nodiscard]] ImportOutcome mergeStaged(host::Staging& staging, Match match,
                                        ImportChanges* changes = nullptr);

} // namespace corvane::workbench::core
