#pragma once

#include "workbench/core/import/ImportMerge.hpp"

#include <corvane/workbench/function_ref.hpp>

#include <cstddef>
#include <string_view>

namespace corvane::workbench::core {

/// How many elements an import added, updated, renamed, and met again as they were. One that was
/// updated and renamed counts as both.
struct ImportCounts {
    std::size_t added = 0;
    std::size_t updated = 0;
    std::size_t renamed = 0;
    std::size_t unchanged = 0;

    /// Whether the project is what it was before.
    [[nodiscard]] bool isNothing() const { return added == 0 && updated == 0 && renamed == 0; }
};

/// One element that an import changed, and how.
struct ImportedElement {
    enum class Change { added, updated, renamed };
    Change change;
    const model::Element* element;
    std::string_view nameBefore; // of a renamed one
};

/// Counts what an import changed, and tells `visit` of each change: first of the elements that were
/// added, then of the updated, then of the renamed ones, each in the order of the import. An
/// element is updated if its document, but for name and children, is not the replaced one's.
///
/// `newTarget` is an element that was added only to import into, and counts as added; null for
/// none. Everything that tells how much an import changed asks here, so that a preview promises
/// what the import then does.
ImportCounts countImported(const ImportChanges& changes, const model::Element* newTarget,
                           function_ref<void(const ImportedElement&)> visit);

/// As above, for who wants only the numbers.
[[nodiscard]] ImportCounts countImported(const ImportChanges& changes,
                                         const model::Element* newTarget = nullptr);

} // namespace corvane::workbench::core
