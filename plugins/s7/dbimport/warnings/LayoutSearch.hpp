#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace corvane::workbench::plugins::s7Driver {

class RootNode;

/// A variable of a data block.
struct FoundVariable {
    std::string name;
    std::size_t declaration = 0; ///< which of the data block it is, from 0, in the file's order
};

/// Where addresses begin to differ from those of the PLC, in which every variable takes memory.
struct AddressShift {
    FoundVariable hidden; ///< takes none in the import, since it is not externally accessible
    FoundVariable moved;  ///< the first one behind it that lies elsewhere in the PLC
};

/// What is to be found; a block without hidden variables has no shift.
struct LayoutQuestions {
    bool shift;
    bool withoutItem;
};

/// What of a data block a user may have to be told.
struct LayoutFindings {
    std::optional<AddressShift> shift;
    std::optional<FoundVariable> withoutItem; ///< the first one of a type that becomes no item
};

/// Lays a data block out once more, next to how the PLC does. Takes time for each declaration,
/// however many elements an array has, and stops as soon as all that was asked for is found.
[[nodiscard]] LayoutFindings findInLayout(const RootNode& root, const LayoutQuestions& questions);

} // namespace corvane::workbench::plugins::s7Driver
