#include <corvane/utils/thread/Owner.hpp>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <thread>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#include <sanitizer/common_interface_defs.h>
#endif

namespace corvane::utils::thread {

namespace {

// The owner, or no thread while the model is on its way. Read by strangers too, so atomic; but only
// a Handover may order what the threads do, or the thread sanitizer would see order where there is
// none.
std::atomic<std::thread::id> owner = std::this_thread::get_id();

void setOwner(std::thread::id thread) { owner.store(thread, std::memory_order_relaxed); }

} // namespace

bool ownsModel() noexcept {
    return owner.load(std::memory_order_relaxed) == std::this_thread::get_id();
}

void refuseStranger(const std::source_location& place) noexcept {
    std::fprintf(stderr, "%s:%u: the model is touched by a thread that does not own it: %s\n",
                 place.file_name(), static_cast<unsigned>(place.line()), place.function_name());
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    __sanitizer_print_stack_trace();
#endif
    std::abort();
}

void Handover::give() {
    expectOwner();
    setOwner({});
    {
        const std::lock_guard lock(mutex_);
        given_ = true;
    }
    wake_.notify_one();
}

void Handover::take() {
    std::unique_lock lock(mutex_);
    wake_.wait(lock, [this] { return given_; });
    claim();
}

bool Handover::takeWithin(std::chrono::milliseconds patience) {
    std::unique_lock lock(mutex_);
    if (!wake_.wait_for(lock, patience, [this] { return given_; }))
        return false;
    claim();
    return true;
}

void Handover::claim() {
    given_ = false;
    setOwner(std::this_thread::get_id());
}

} // namespace corvane::utils::thread
