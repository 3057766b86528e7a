#pragma once

#include <string>
#include <string_view>

namespace corvane::workbench::plugins::s7Driver {

/// What stands between the name of a data block and its variables, of which the import makes
/// nothing and of which a user may have to be told.
struct BlockHeader {
    /// The word of the first line `WORD :` that has no value: what follows was taken for that.
    std::string lineWithoutValue;
    /// A VAR section in the place of the structure.
    bool variableSection = false;
    /// The name of a function block or of a type in the place of the structure.
    bool ofType = false;
};

/// Looks at the header of a data block, from its name on, as far as `text` has it.
[[nodiscard]] BlockHeader headerOf(std::string_view text);

} // namespace corvane::workbench::plugins::s7Driver
