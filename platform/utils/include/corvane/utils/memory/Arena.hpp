#pragma once

#include <corvane/utils/Export.hpp>
#include <corvane/utils/memory/LargePages.hpp>

#include <cstddef>
#include <utility>
#include <vector>

namespace corvane::utils::memory {

/// Memory that is taken in small pieces, one behind the other, and given back all at once. For one
/// thread at a time.
///
/// For what is built up and thrown away as a whole, such as the tree of a file that is being read:
/// a piece costs an addition, and neither a header nor a call to free it. What stands in it must
/// need no destructor.
class CORVANE_EXPORT Arena {
public:
    /// What pieces begin at; where all sizes are multiples of `alignof(std::max_align_t)`, they
    /// begin at that.
    static constexpr std::size_t kAlignment = alignof(void*);

    Arena() = default;
    Arena(const Arena&) = delete;
    Arena& operator=(const Arena&) = delete;

    /// A piece of `size` bytes, which nothing has set to anything. Throws std::bad_alloc. A piece
    /// larger than a block gets a block of its own size.
    [[nodiscard]] void* allocate(std::size_t size) {
        size = (size + kAlignment - 1) / kAlignment * kAlignment;
        if (size > static_cast<std::size_t>(end_ - next_))
            addBlock(size);
        return std::exchange(next_, next_ + size);
    }

    /// Gives everything back: what was allocated must not be used any more, and no destructor is
    /// called. The arena is as new.
    void release();

private:
    // Blocks grow until they consist of large pages. They begin small, since most work is.
    static constexpr std::size_t kFirstBlock = std::size_t{16} << 10U;
    static constexpr std::size_t kLargestBlock = 2 * kLargePage;
    static constexpr std::size_t kGrowth = 16;

    void addBlock(std::size_t size);

    std::vector<Block> blocks_;
    std::size_t nextSize_ = kFirstBlock;
    std::byte* next_ = nullptr;
    std::byte* end_ = nullptr;
};

} // namespace corvane::utils::memory
