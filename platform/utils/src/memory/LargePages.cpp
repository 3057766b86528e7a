#include <corvane/utils/memory/LargePages.hpp>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace corvane::utils::memory {

// To the whole of the pages that the block touches: a hint for the few bytes around it does no
// harm, and the system may have placed the block so that it begins with a large page.
void preferLargePages(void* block, std::size_t size) {
    if (size < kLargePage)
        return;
    static const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t first = begin / page * page;
    static_cast<void>(
        ::madvise(reinterpret_cast<void*>(first), begin + size - first, MADV_HUGEPAGE));
}

Block allocateBlock(std::size_t size) {
    const std::align_val_t alignment{size < kLargePage ? alignof(std::max_align_t) : kLargePage};
    Block block(static_cast<std::byte*>(::operator new(size, alignment)), FreeBlock{alignment});
    preferLargePages(block.get(), size);
    return block;
}

} // namespace corvane::utils::memory
