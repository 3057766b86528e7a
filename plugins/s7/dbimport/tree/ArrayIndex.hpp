#pragma once

#include "dbimport/facts/VariableDeclaration.hpp"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::plugins::s7Driver {

/// The index of the element that an array is at: an odometer over its dimensions, the last of which
/// runs fastest, together with its text.
class ArrayIndex {
public:
    /// Starts at the lower bounds. Throws std::runtime_error for a dimension whose upper bound is
    /// more than one below its lower bound (one below makes an empty dimension), for one whose size
    /// does not fit 32 bits, and for more than `kMaxDimensions` dimensions.
    explicit ArrayIndex(std::span<const Dimension> dimensions);

    [[nodiscard]] std::size_t dimensionCount() const { return dimensionSizes_.size(); }
    [[nodiscard]] std::span<const std::uint32_t> dimensionSizes() const { return dimensionSizes_; }
    [[nodiscard]] std::span<const std::int32_t> lowerBounds() const { return lowerBounds_; }
    [[nodiscard]] std::span<const std::int32_t> currentIndex() const { return currentIndex_; }

    /// The product of the sizes, 1 without dimensions; the largest number where it does not fit.
    [[nodiscard]] std::uint64_t elementCount() const;

    /// The index in brackets, such as [3] or [0,-1]. Valid until the next step.
    [[nodiscard]] std::string_view text() const { return text_; }

    /// The most characters that the text can have.
    [[nodiscard]] std::size_t largestTextSize() const;

    /// Goes to the next element, from the last one back to the first. True when the last dimension
    /// came to its end. Throws std::runtime_error when there is no element to be at.
    bool step();

private:
    bool countLastDigit();
    void writeTextFrom(std::size_t dimension);

    std::vector<std::uint32_t> dimensionSizes_;
    std::vector<std::int32_t> lowerBounds_;
    std::vector<std::int32_t> currentIndex_;
    std::vector<std::size_t> textStarts_; // of each dimension's number in text_
    std::string text_;
};

/// Adds `carry` to the index of one dimension, which wraps at its end, and returns what is carried
/// to the next dimension. Throws std::runtime_error when the index is below the lower bound before,
/// or out of bounds after: no element of a sound array ever is.
[[nodiscard]] std::uint64_t stepDimension(std::int32_t& current, std::int32_t low,
                                          std::uint32_t size, std::uint64_t carry);

} // namespace corvane::workbench::plugins::s7Driver
