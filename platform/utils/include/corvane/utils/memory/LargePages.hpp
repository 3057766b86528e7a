#pragma once

#include <corvane/utils/Export.hpp>

#include <cstddef>
#include <memory>
#include <new>

namespace corvane::utils::memory {

/// Asks the system to back a large block that is about to be filled with large pages, where it has
/// them: filling fresh memory page by page costs more than what is written into it. Only a hint;
/// the block stays the caller's, and small blocks are left alone.
CORVANE_EXPORT void preferLargePages(void* block, std::size_t size);

/// Fills a block with zeros. The pages of one that is so large that it has pages of its own are not
/// touched: the system takes them back and gives zeros where they are next used, as it does for
/// memory that is fresh anyway.
CORVANE_EXPORT void fillWithZeros(void* block, std::size_t size);

struct FreeBlock {
    std::align_val_t alignment{};

    void operator()(std::byte* block) const { ::operator delete(block, alignment); }
};

/// A block of memory without objects, aligned for every type.
using Block = std::unique_ptr<std::byte, FreeBlock>;

/// The size of a large page, in bytes.
inline constexpr std::size_t kLargePage = std::size_t{2} << 20U;

/// A fresh block of `size` bytes, on large pages as far as it is that large. Throws std::bad_alloc.
[[nodiscard]] CORVANE_EXPORT Block allocateBlock(std::size_t size);

} // namespace corvane::utils::memory
