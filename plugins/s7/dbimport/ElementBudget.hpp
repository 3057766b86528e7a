#pragma once

#include "dbimport/Messages.hpp"

#include <cstdint>

namespace corvane::workbench::plugins::s7Driver {

/// How many nodes the layout of a file may still visit. An array of a hundred characters in the
/// file can ask for billions of visits, some of which write nothing.
class ElementBudget {
public:
    explicit ElementBudget(std::uint64_t elements) : maximum_(elements), left_(elements) {}

    /// Fails when fewer than `elements` are left.
    void require(std::uint64_t elements) const {
        if (elements > left_)
            fail(Message::tooManyElements, maximum_);
    }

    /// Takes one; fails when none is left.
    void spend() {
        require(1);
        --left_;
    }

private:
    std::uint64_t maximum_;
    std::uint64_t left_;
};

} // namespace corvane::workbench::plugins::s7Driver
