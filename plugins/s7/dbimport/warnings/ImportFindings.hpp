#pragma once

#include "dbimport/facts/ForeignNames.hpp"
#include "dbimport/tree/LayoutNotes.hpp"
#include "dbimport/warnings/FindingPlaces.hpp"
#include "dbimport/warnings/LayoutSearch.hpp"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

class RootNode;

/// A data block of the file.
struct FoundBlock {
    std::string name;
    std::uint64_t place = 0;  ///< where its name begins in the file, in bytes from 0
    std::uint16_t number = 0; ///< that it got, where it got one
};

/// Data blocks that have something in common. However many there are, only the first ones are kept.
class FoundBlocks {
public:
    static constexpr std::size_t kKept = 5;

    void add(const FoundBlock& block) {
        if (count_++ < kKept)
            first_.push_back(block);
    }

    [[nodiscard]] std::size_t count() const { return count_; }

    /// The first ones, in the order of the file; at least one unless there is none.
    [[nodiscard]] const std::vector<FoundBlock>& first() const { return first_; }

private:
    std::size_t count_ = 0;
    std::vector<FoundBlock> first_;
};

/// How many bytes of a data block addresses reach, which count them in 16 bits.
inline constexpr std::uint64_t kAddressableBytes =
    std::uint64_t{std::numeric_limits<std::uint16_t>::max()} + 1;

/// What the stages of an import come across that changes nothing and that a user should know.
struct ImportFindings {
    /// Data blocks whose names were read as Windows-1252.
    struct ForeignBlock {
        std::string name;
        ForeignNames names;
    };
    static constexpr std::size_t kForeignBlocksKept = 10;

    struct HiddenVariable {
        FoundBlock block;
        AddressShift shift;
    };

    std::size_t imported = 0; ///< data blocks that are in the document

    FoundBlocks withoutBody; ///< read and dropped
    FoundBlocks guessed;     ///< with numbers that neither the file nor the PLC has
    FoundBlocks wrapped;     ///< with numbers that did not fit 16 bits

    /// Data blocks with variables that lie elsewhere in the PLC since others are hidden, and what
    /// there is to tell of the first one.
    std::size_t shiftedBlocks = 0;
    std::optional<HiddenVariable> firstHidden;

    /// Data blocks that are larger than addresses reach, and the bytes that the first one takes.
    FoundBlocks large;
    std::uint64_t largeBytes = 0;

    /// Variables of types that become no item, and the first one's declaration.
    LayoutNotes::Counts withoutItem{};
    std::optional<FindingPlace> firstWithoutItem;

    std::size_t foreignBlocks = 0;
    std::vector<ForeignBlock> firstForeign;

    void addForeignNames(const std::string& block, const ForeignNames& names);

    /// Looks at a data block that was laid out: it takes `bytes`, and `notes` were made on the way.
    void addLayout(const FoundBlock& block, const RootNode& root, const LayoutNotes& notes,
                   std::uint64_t bytes);
};

} // namespace corvane::workbench::plugins::s7Driver
