#pragma once

#include "prepare/Catalogue.hpp"
#include "prepare/Prepare.hpp"

#include <cstdint>
#include <vector>

namespace corvane::workbench::plugins::s7Driver::prepare {

/// Says of a declaration what its members' types are, and how large it is when all of them are
/// written out, before anything is: a few lines can ask for more than any machine has. Each
/// declaration is looked at once, whatever depends on it, and without recursion.
class Measurer {
public:
    /// All must outlive the object.
    Measurer(Declarations& declarations, Catalogue& catalogue, const Limits& limits)
        : declarations_(&declarations), catalogue_(&catalogue), limits_(limits) {}

    /// Afterwards the declaration has its measure or its failure: its own, or that of what it is
    /// made of.
    void measure(std::uint32_t declaration);

private:
    /// A structure around what is measured.
    struct Around {
        std::uint32_t end;
        std::uint64_t times; ///< how often its members are there
    };
    /// A declaration that is measured as soon as what it needs is.
    struct Frame {
        std::uint32_t declaration;
        std::uint32_t next; ///< the member that follows
        std::vector<Around> around;
        Measure sum = {};
    };

    void begin(std::uint32_t declaration);
    bool step(Frame& frame);
    void addMember(Frame& frame, const Declaration& owner, Member& member);
    void addComments(Frame& frame, const Declaration& owner, const Member& member) const;
    bool needs(const Member& member);
    [[nodiscard]] std::uint64_t countOf(const Declaration& owner, const Member& member) const;
    void finish(const Frame& frame);

    Declarations* declarations_;
    Catalogue* catalogue_;
    Limits limits_;
    std::vector<Frame> frames_;
    std::vector<bool> begun_;
};

/// How many units of two bytes stand for an area of a system type, or for a pointer.
inline constexpr std::uint32_t kPointerUnits = 3;

/// What two bytes of which nothing is known are declared as: the import gives it a place and makes
/// no item of it.
inline constexpr std::string_view kUnitType = "S5Time";

} // namespace corvane::workbench::plugins::s7Driver::prepare
