#pragma once

#include "workbench/core/import/ImportMerge.hpp"

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

/// What a user should know of an import although it succeeded: something that befell several
/// elements, told of the first one.
struct MergeWarning {
    enum class Kind : std::uint8_t {
        misleadingNames, ///< elements keep names that the file has for others; see Match
        successors,      ///< elements took the place of others, and the names in the file
        takenNames,      ///< new elements got other names, since theirs were taken
    };
    Kind kind;
    std::string element; ///< the path of the first one
    std::u16string text; ///< translated; says how many there are, where it is more than one
};

/// The warnings of an import that was merged, at most one of each kind.
[[nodiscard]] std::vector<MergeWarning> mergeWarnings(const ImportChanges& changes);

/// A warning of the import of a file as a user reads it: where in the file, which is called `file`
/// there, and the element concerned, each if there is one, and the text.
[[nodiscard]] std::u16string textOf(const ui::ImportWarning& warning, std::string_view file);
[[nodiscard]] std::u16string textOf(const MergeWarning& warning);

} // namespace corvane::workbench::core
