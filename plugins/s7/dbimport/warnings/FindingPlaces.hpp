#pragma once

#include "dbimport/diagnosis/SourcePlace.hpp"

#include <corvane/utils/io/InputStream.hpp>

#include <compare>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

/// A data block of the file, or one of its variables.
struct FindingPlace {
    std::uint64_t block = 0; ///< where the data block's name begins in the file, in bytes from 0
    /// Which of its declarations it is, from 0, in the file's order; empty for the block itself.
    std::optional<std::size_t> declaration;

    friend auto operator<=>(const FindingPlace&, const FindingPlace&) = default;
};

/// Where in the file these stand, in their order. The file is read anew, up to the last of them:
/// where declarations begin nobody has remembered, since nobody asks as a rule.
///
/// Empty for a file that cannot be read a second time, or that has become another one; nothing is
/// thrown.
[[nodiscard]] std::vector<SourcePlace> sourcePlaces(utils::io::InputStream& stream,
                                                    std::span<const FindingPlace> findings);

} // namespace corvane::workbench::plugins::s7Driver
