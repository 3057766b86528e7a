#pragma once

#include "workbench/core/import/ImportMerge.hpp"
#include "workbench/core/project/Project.hpp"

#include <corvane/workbench/host/ReferenceTable.hpp>
#include <corvane/workbench/host/Staging.hpp>

#include <string>

namespace corvane::workbench::core {

/// An import in two halves: its document stands beside the project, loaded and alive, and the
/// project knows nothing of it until it is merged.
class StagedImport {
public:
    /// Builds what the document describes; throws DocumentError or json::decoder::DecodeError.
    /// Project and target must outlive the object.
    StagedImport(Project& project, model::Element& target, std::string document);

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
