#include <corvane/utils/memory/Arena.hpp>

#include <algorithm>

namespace corvane::utils::memory {

void Arena::release() {
    blocks_.clear();
    nextSize_ = kFirstBlock;
    next_ = end_ = nullptr;
}

void Arena::addBlock(std::size_t size) {
    size = std::max(size, nextSize_);
    next_ = blocks_.emplace_back(allocateBlock(size)).get();
    end_ = next_ + size;
    nextSize_ = std::min(kGrowth * nextSize_, kLargestBlock);
}

} // namespace corvane::utils::memory
