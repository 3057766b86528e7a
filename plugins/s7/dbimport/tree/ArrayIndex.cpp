#include "dbimport/tree/ArrayIndex.hpp"

#include "dbimport/facts/ImportLimits.hpp"
#include "dbimport/facts/Messages.hpp"

#include <corvane/utils/numeric/FormatNumber.hpp>

#include <algorithm>
#include <limits>

namespace corvane::workbench::plugins::s7Driver {

namespace {

std::uint32_t sizeOf(Dimension dimension) {
    constexpr std::int64_t kLargest = std::numeric_limits<std::uint32_t>::max();
    const std::int64_t size = std::int64_t{dimension.high} - dimension.low + 1;
    if (size < 0)
        fail(Message::negativeArraySize);
    if (size > kLargest)
        fail(Message::dimensionTooLarge, static_cast<std::uint64_t>(kLargest));
    return static_cast<std::uint32_t>(size);
}

} // namespace

ArrayIndex::ArrayIndex(std::span<const Dimension> dimensions) {
    if (dimensions.size() > kMaxDimensions)
        fail(Message::tooManyDimensions, kMaxDimensions);
    for (const Dimension dimension : dimensions) {
        dimensionSizes_.push_back(sizeOf(dimension));
        lowerBounds_.push_back(dimension.low);
    }
    currentIndex_ = lowerBounds_;
    textStarts_.assign(dimensions.size(), 1);
    text_ = "[]";
    writeTextFrom(0);
}

std::uint64_t ArrayIndex::elementCount() const {
    if (std::ranges::find(dimensionSizes_, 0U) != dimensionSizes_.end())
        return 0;
    std::uint64_t count = 1;
    for (const std::uint32_t size : dimensionSizes_)
        if (__builtin_mul_overflow(count, std::uint64_t{size}, &count))
            return std::numeric_limits<std::uint64_t>::max();
    return count;
}

std::size_t ArrayIndex::largestTextSize() const {
    using utils::numeric::detail::formatNumber;
    std::size_t size = 1 + dimensionCount();
    for (std::size_t dimension = 0; dimension < dimensionCount(); ++dimension) {
        const std::int64_t low = lowerBounds_[dimension];
        const std::int64_t high = low + dimensionSizes_[dimension];
        size += std::max(formatNumber(low).view().size(), formatNumber(high).view().size());
    }
    return size;
}

bool ArrayIndex::step() {
    bool wrapped = false;
    std::uint64_t carry = 1;
    std::size_t dimension = dimensionCount();
    while (carry != 0 && dimension > 0) {
        --dimension;
        carry = stepDimension(currentIndex_[dimension], lowerBounds_[dimension],
                              dimensionSizes_[dimension], carry);
        wrapped |= carry != 0;
    }
    if (wrapped || dimensionCount() == 0 || !countLastDigit())
        writeTextFrom(dimension);
    return wrapped;
}

// Nine steps of ten change nothing but the last digit. Below zero the digits count down. Written
// anew at each step the text would be the same (Layout.IndicesFollowTheBounds).
bool ArrayIndex::countLastDigit() {
    char& digit = text_[text_.size() - 2];
    if (currentIndex_.back() <= 0 || digit == '9')
        return false;
    ++digit;
    return true;
}

// The numbers in front of the dimension stand as they are.
void ArrayIndex::writeTextFrom(std::size_t dimension) {
    if (dimension < dimensionCount())
        text_.resize(textStarts_[dimension]);
    for (; dimension < dimensionCount(); ++dimension) {
        textStarts_[dimension] = text_.size();
        text_.append(utils::numeric::detail::formatNumber(currentIndex_[dimension]).view());
        text_.push_back(',');
    }
    text_.back() = ']';
}

std::uint64_t stepDimension(std::int32_t& current, std::int32_t low, std::uint32_t size,
                            std::uint64_t carry) {
    if (current < low)
        fail(Message::indexBelowBounds);
    const auto offset = static_cast<std::uint64_t>(std::int64_t{current} - low) + carry;
    if (offset < size) {
        current = static_cast<std::int32_t>(low + static_cast<std::int64_t>(offset));
        return 0;
    }
    if (size == 0)
        fail(Message::indexOutOfBounds);
    current = static_cast<std::int32_t>(low + static_cast<std::int64_t>(offset % size));
    return offset / size;
}

} // namespace corvane::workbench::plugins::s7Driver
