#pragma once

#include "dbimport/facts/TypeTable.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane::workbench::plugins::s7Driver {

/// What the layout of a data block comes across and makes no item of. Only such variables pay for
/// it; all that there is to tell of them is found out afterwards (`findInLayout`).
class LayoutNotes {
public:
    /// Counts of variables, array elements one by one, in the order of `kTypes`.
    using Counts = std::array<std::uint64_t, kTypes.size()>;

    void noteHidden() { hidden_ = true; }
    void noteWithoutItem(S7DataType type) { ++withoutItem_[static_cast<std::size_t>(type) - 1]; }

    /// Whether there is a variable that is not externally accessible.
    [[nodiscard]] bool hidden() const { return hidden_; }

    /// The variables of types that become no item.
    [[nodiscard]] const Counts& withoutItem() const { return withoutItem_; }

private:
    bool hidden_ = false;
    Counts withoutItem_{};
};

} // namespace corvane::workbench::plugins::s7Driver
