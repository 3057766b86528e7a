#pragma once

#include <corvane/utils/Export.hpp>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <source_location>

/// Who may touch the model: whatever is made of pooled memory and what hangs on it, that is
/// elements, their forms and references, the objects of plug-ins, and the pools themselves.
///
/// None of it knows a lock. Instead, exactly one thread owns all of it at any time, and only the
/// owner creates, calls and destroys. The first owner is the thread that loads this library, which
/// is the program's main thread; from there the model goes from thread to thread by a Handover, and
/// on the way it belongs to nobody.
namespace corvane::utils::thread {

/// Whether the calling thread owns the model.
[[nodiscard]] CORVANE_EXPORT bool ownsModel() noexcept;

/// Whether `expectOwner` looks: in debug builds, which those under a sanitizer are, too.
#if defined(CORVANE_CHECK_OWNER)
inline constexpr bool kOwnerIsChecked = true;
#else
inline constexpr bool kOwnerIsChecked = false;
#endif

/// Ends the program with a message that names `place`.
[[noreturn]] CORVANE_EXPORT void refuseStranger(const std::source_location& place) noexcept;

/// Stands where the model is touched: ends the program if the calling thread does not own it. Costs
/// nothing where it does not look.
inline void expectOwner(
    [[maybe_unused]] const std::source_location& place = std::source_location::current()) noexcept {
    if constexpr (kOwnerIsChecked)
        if (!ownsModel())
            refuseStranger(place);
}

/// A place where one thread leaves the model and another one takes it up. What the first did before
/// it gave, the second sees after it has taken.
///
/// One is for one direction: between two threads that pass the model to and fro there are two, so
/// that neither takes back what it has just given.
class CORVANE_EXPORT Handover {
public:
    Handover() = default;
    Handover(const Handover&) = delete;
    Handover& operator=(const Handover&) = delete;
    /// What was given must have been taken.
    ~Handover() = default;

    /// The calling thread, which owns the model, owns it no longer when this returns.
    void give();

    /// Waits until the model is given; the calling thread owns it then.
    void take();

    /// As `take`, but gives up after `patience`; true if the model was taken.
    [[nodiscard]] bool takeWithin(std::chrono::milliseconds patience);

private:
    void claim();

    std::mutex mutex_;
    std::condition_variable wake_;
    bool given_ = false; // guarded by mutex_
};

} // namespace corvane::utils::thread
