#include <corvane/utils/memory/LargePages.hpp>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstring>

namespace corvane::utils::memory {

namespace {

std::uintptr_t pageSize() {
    static const auto size = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    return size;
}

/// From this size on, allocators get their memory from the system as it is asked for.
constexpr std::size_t kOwnPages = std::size_t{128} << 10U;

} // namespace

// To the whole of the pages that the block touches: a hint for the few bytes around it does no
// harm, and the system may have placed the block so that it begins with a large page.
void preferLargePages(void* block, std::size_t size) {
    if (size < kLargePage)
        return;
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t first = begin / pageSize() * pageSize();
    static_cast<void>(
        ::madvise(reinterpret_cast<void*>(first), begin + size - first, MADV_HUGEPAGE));
}

// Only whole pages, since what shares a page with the block is somebody else's. Pages that are
// locked into memory cannot be taken back.
void fillWithZeros(void* block, std::size_t size) {
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t end = begin + size;
    const std::uintptr_t first = (begin + pageSize() - 1) / pageSize() * pageSize();
    const std::uintptr_t last = end / pageSize() * pageSize();
    if (size < kOwnPages ||
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_DONTNEED) != 0) {
        std::memset(block, 0, size);
        return;
    }
    std::memset(block, 0, first - begin);
    std::memset(reinterpret_cast<void*>(last), 0, end - last);
}

Block allocateBlock(std::size_t size) {
    const std::align_val_t alignment{size < kLargePage ? alignof(std::max_align_t) : kLargePage};
    Block block(static_cast<std::byte*>(::operator new(size, alignment)), FreeBlock{alignment});
    preferLargePages(block.get(), size);
    return block;
}

} // namespace corvane::utils::memory
