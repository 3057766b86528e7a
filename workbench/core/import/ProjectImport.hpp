#pragma once

#include "workbench/core/import/ImportMerge.hpp"
#include "workbench/core/project/Project.hpp"

#include <corvane/workbench/host/ReferenceTable.hpp>
#include <corvane/workbench/host/Staging.hpp>

#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace corvane::workbench::core {

/// An import in two halves: its document stands beside the project, loaded and alive, and the
/// project knows nothing of it until it is merged.
class StagedImport {
public:
    /// How much of the document is built.
    enum class Depth : std::uint8_t {
        all,
        top, ///< nothing below the elements at its top: to be looked at, and not to be merged
    };

    /// Builds what the document describes; throws DocumentError or json::decoder::DecodeError.
    /// Project and target must outlive the object.
    StagedImport(Project& project, model::Element& target, std::string document,
                 Depth depth = Depth::all);

    /// The elements at the top of the document, in its order, until they are merged. What is set in
    /// one of them by way of its form comes in as if the document said it.
    [[nodiscard]] std::span<const std::unique_ptr<model::Element>> elements() const {
        return staging_.elements();
    }

    /// Merges it into the project, once, and notes the changes.
    ImportOutcome merge(const ImportOptions& options, ImportChanges& changes);

    /// Likewise for who wants to know of no changes; nothing is removed then.
    ImportOutcome merge();

private:
    ImportOutcome merge(Match match, ImportChanges* changes);

    Project* project_;
    host::ReferenceTable references_;
    host::Staging staging_;
};

/// Imports a document, a JSON array of element documents, below an element of the project.
///
/// The document is first built beside the project, completely: whatever is thrown (DocumentError,
/// json::decoder::DecodeError) leaves the project as it was. Nothing that exists is removed.
/// Afterwards the project is what saving it and loading it again would give.
ImportOutcome importDocument(Project& project, model::Element& target, std::string document);

} // namespace corvane::workbench::core
