#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::ui {

/// How much of a device's memory something covers.
struct MemoryUse {
    std::string name;
    std::uint64_t bytes;
};

/// What a user should know of a file although it was imported. It changes nothing in the document.
struct ImportWarning {
    std::u16string text; ///< translated
    /// Where in the file, both from 1, columns in code points; empty where there is no such place.
    std::optional<std::uint64_t> line = std::nullopt;
    std::optional<std::uint64_t> column = std::nullopt;
    /// The element concerned: the path of names from the top of the document on, as references
    /// have it but without a leading "/"; empty where it is the whole file.
    std::string element;
};

/// Why a file could not be imported.
struct ImportFailure {
    std::u16string text; ///< translated
    /// Where in the file, both from 1, columns in code points; empty where there is no such place.
    std::optional<std::uint64_t> line = std::nullopt;
    std::optional<std::uint64_t> column = std::nullopt;
    /// What the user can do about it, translated; empty where nothing is known to help.
    std::optional<std::u16string> hint = std::nullopt;
};

/// What an import action makes of a file.
struct ImportedDocument {
    /// A JSON array of element documents, to be imported below the element of the form.
    std::string text;
    /// What the file describes, piece by piece in the file's order, for the summary that a user
    /// reads; the names are those of the elements at the top of the document.
    std::vector<MemoryUse> memory;
    std::vector<ImportWarning> warnings;
};

} // namespace corvane::workbench::ui
