#pragma once

#include "workbench/core/import/ImportReport.hpp"
#include "workbench/core/import/ImportWarnings.hpp"

#include <corvane/workbench/function_ref.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// One change of an import, written down: it can be read when the import was taken back. The
/// members say what those of ImportedElement say.
struct PreviewedChange {
    ImportedElement::Change change;
    std::string path;
    std::optional<std::string> from;
    std::vector<MemberChange> members;
    /// Of an element that stands at the top of the document: its place there, from 0.
    std::optional<std::size_t> position;
};

/// What an import would do to a project.
struct ImportPreview {
    ImportCounts counts;
    std::vector<PreviewedChange> changes; ///< in the order of `countImported`
    std::vector<MergeWarning> warnings;
};

/// Writes down what an import below `target` did, while it stands. Calls `tick` again and again
/// meanwhile, which may throw to end it.
[[nodiscard]] ImportPreview previewOf(const ImportChanges& changes, const ImportOutcome& outcome,
                                      const model::Element& target, Match match,
                                      function_ref<void()> tick);

} // namespace corvane::workbench::core
