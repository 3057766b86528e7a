#include <corvane/utils/memory/Pool.hpp>

#include <corvane/utils/memory/Arena.hpp>

#include <array>
#include <new>

namespace corvane::utils::memory {

namespace {

/// Sizes differ by what every type may be aligned to.
constexpr std::size_t kStep = alignof(std::max_align_t);

/// The places for objects of one size.
class Pool {
public:
    void* allocate(std::size_t size) {
        ++objects_;
        if (free_ == nullptr)
            return arena_.allocate(size);
        Place* const place = free_;
        free_ = place->next;
        return place;
    }

    void free(void* place) {
        free_ = new (place) Place{free_};
        if (--objects_ != 0)
            return;
        free_ = nullptr;
        arena_.release();
    }

private:
    struct Place {
        Place* next;
    };

    Arena arena_;
    Place* free_ = nullptr;
    std::size_t objects_ = 0;
};

Pool& poolOf(std::size_t size) {
    // Never destroyed: objects may go in any order while the program ends.
    static auto& pools = *new std::array<Pool, kLargestPooled / kStep + 1>;
    return pools[(size + kStep - 1) / kStep];
}

/// Memory that the address sanitizer shall watch must come from its own allocator.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooling = false;
#else
constexpr bool kPooling = true;
#endif

constexpr bool isPooled(std::size_t size) { return kPooling && size <= kLargestPooled; }

} // namespace

void* allocatePooled(std::size_t size) {
    if (!isPooled(size))
        return ::operator new(size);
    return poolOf(size).allocate((size + kStep - 1) / kStep * kStep);
}

void freePooled(void* place, std::size_t size) noexcept {
    if (!isPooled(size))
        ::operator delete(place);
    else if (place != nullptr)
        poolOf(size).free(place);
}

} // namespace corvane::utils::memory
