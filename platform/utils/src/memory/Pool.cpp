#include <corvane/utils/memory/Pool.hpp>

#include <corvane/utils/memory/Arena.hpp>
#include <corvane/utils/thread/Owner.hpp>

#include <array>
#include <new>
#include <utility>

namespace corvane::utils::memory {

namespace {

/// Sizes differ by what every type may be aligned to.
constexpr std::size_t kStep = alignof(std::max_align_t);

/// The places for objects of one size.
class Pool {
public:
    void* allocate(std::size_t size) {
        void* const place = free_ == nullptr ? arena_.allocate(size) : takeFree();
        ++objects_; // when nothing can fail any more
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

    Place* takeFree() { return std::exchange(free_, free_->next); }

    Arena arena_;
    Place* free_ = nullptr;
    std::size_t objects_ = 0;
};

constexpr std::size_t stepsOf(std::size_t size) { return (size + kStep - 1) / kStep; }

Pool& poolOf(std::size_t steps) {
    // Never destroyed: objects may go in any order while the program ends.
    static auto& pools = *new std::array<Pool, stepsOf(kLargestPooled) + 1>;
    return pools[steps];
}

/// Memory that the address sanitizer shall watch must come from its own allocator. The thread
/// sanitizer shall watch the pools themselves.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kPooling = false;
#else
constexpr bool kPooling = true;
#endif

constexpr bool isPooled(std::size_t size) { return kPooling && size <= kLargestPooled; }

} // namespace

void* allocatePooled(std::size_t size) {
    thread::expectOwner();
    if (!isPooled(size))
        return ::operator new(size);
    const std::size_t steps = stepsOf(size);
    return poolOf(steps).allocate(steps * kStep);
}

void freePooled(void* place, std::size_t size) noexcept {
    if (place == nullptr)
        return;
    thread::expectOwner();
    if (!isPooled(size))
        ::operator delete(place);
    else
        poolOf(stepsOf(size)).free(place);
}

} // namespace corvane::utils::memory
