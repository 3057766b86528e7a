#pragma once

#include "workbench/core/import/ImportMerge.hpp"

#include <corvane/workbench/host/Model.hpp>

#include <vector>

namespace corvane::workbench::core {

/// The elements that stand below one that an import has met again, at any depth, and are no longer
/// in its document: neither they nor anything above them but what was met. Elements that state no
/// `importId` are no document's, and not among them. Nor are, where elements are matched by
/// identity, those of which a sibling has met what is in the document: they are the user's second
/// view of the same.
///
/// Siblings stand together, in their order; what is below one of them is missing with it and not
/// named. All are still in the tree.
[[nodiscard]] std::vector<model::Element*> missingElements(const ImportChanges& changes,
                                                           Match match);

/// Takes the missing elements out of the tree, of which `changes` keeps a note, and gives those
/// that came under another name, since one of them had theirs, the name in the document. True if
/// references have lost their elements: they wait, and are to be validated again.
bool removeMissing(host::Model& model, Match match, ImportChanges& changes);

} // namespace corvane::workbench::core
