#pragma once

#include "workbench/core/import/ImportMerge.hpp"
#include "workbench/core/import/MemberChanges.hpp"

#include <corvane/workbench/function_ref.hpp>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

class PathsBefore;

/// How many elements an import added, changed, moved, renamed and removed, met again as they were,
/// and found missing. One that was renamed beside another change counts as both; else each counts
/// once.
struct ImportCounts {
    std::size_t added = 0;
    std::size_t changed = 0;
    std::size_t moved = 0;
    std::size_t renamed = 0;
    std::size_t removed = 0;
    std::size_t unchanged = 0;
    std::size_t missing = 0;

    friend bool operator==(const ImportCounts&, const ImportCounts&) = default;

    /// Whether the project is what it was before.
    [[nodiscard]] bool isNothing() const {
        return added + changed + moved + renamed + removed == 0;
    }
};

/// One element, and what an import did to it. What costs something is put together when it is asked
/// for. Valid while it is being visited.
class ImportedElement {
public:
    enum class Change : std::uint8_t {
        added,
        changed, ///< its document, but for name and children, is another one
        moved,   ///< it was matched by its path and has another identity now; perhaps changed, too
        renamed, ///< it stood under another name
        removed,
        missing, ///< it is no longer in the document, and stays
    };

    [[nodiscard]] Change change() const { return change_; }
    [[nodiscard]] const model::Element& element() const { return *element_; }
    /// The element's name before; of one that was renamed.
    [[nodiscard]] std::string_view nameBefore() const { return nameBefore_; }
    /// Where it stands; of a removed one, where it would.
    [[nodiscard]] std::string path() const;
    /// Where it stood before, if that is another path; of an added one the path that the document
    /// gives it, if that was taken.
    [[nodiscard]] std::optional<std::string> from() const;
    /// The members of its document that changed; of one that was changed or moved.
    [[nodiscard]] std::vector<MemberChange> members() const;

private:
    friend class ImportVisit;
    ImportedElement(Change change, const model::Element& element, const PathsBefore& paths)
        : element_(&element), paths_(&paths), change_(change) {}

    const model::Element* element_;
    const PathsBefore* paths_;
    const model::Element* parent_ = nullptr;   // of what was removed, to which it leads no more
    const skill::Element* replaced_ = nullptr; // what a changed or moved one was
    std::string_view nameBefore_;
    Change change_;
};

/// Counts what an import changed, and tells `visit` of each change: first of the elements that were
/// added, then of those changed and moved, then of the renamed, the removed and the missing, each
/// in the order of the import.
///
/// `newTarget` is an element that was added only to import into, and counts as added; null for
/// none. Everything that tells how much an import changed asks here, so that a preview promises
/// what the import then does.
ImportCounts countImported(const ImportChanges& changes, Match match,
                           const model::Element* newTarget,
                           function_ref<void(const ImportedElement&)> visit);

/// As above, for who wants only the numbers.
[[nodiscard]] ImportCounts countImported(const ImportChanges& changes, Match match,
                                         const model::Element* newTarget = nullptr);

} // namespace corvane::workbench::core
