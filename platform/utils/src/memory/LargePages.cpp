#include <corvane/utils/memory/LargePages.hpp>

#include <sys/mman.h>

#include <cstdint>

namespace corvane::utils::memory {

void preferLargePages(void* block, std::size_t size) {
    constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20U;
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    const std::uintptr_t first = (begin + kLargePage - 1) / kLargePage * kLargePage;
    const std::uintptr_t end = (begin + size) / kLargePage * kLargePage;
    if (first < end)
        static_cast<void>(::madvise(reinterpret_cast<void*>(first), end - first, MADV_HUGEPAGE));
}

} // namespace corvane::utils::memory
