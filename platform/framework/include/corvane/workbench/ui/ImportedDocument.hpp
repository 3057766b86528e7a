#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane::workbench::ui {

/// How much of a device's memory something covers.
struct MemoryUse {
    std::string name;
    std::uint64_t bytes;
};

/// What an import action makes of a file.
struct ImportedDocument {
    /// A JSON array of element documents, to be imported below the element of the form.
    std::string text;
    /// What the file describes, piece by piece in the file's order, for the summary that a user
    /// reads; the names are those of the elements at the top of the document.
    std::vector<MemoryUse> memory;
};

} // namespace corvane::workbench::ui
