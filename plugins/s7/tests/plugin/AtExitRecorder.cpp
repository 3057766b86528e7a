#include "AtExitRecorder.hpp"

#include <cxxabi.h>
#include <dlfcn.h>

#include <array>

namespace corvane::workbench::plugins::s7Driver::testing {

namespace {

using Destructor = void (*)(void*);
using AtExit = int (*)(Destructor, void*, void*);

/// The destructor of one static.
struct Announcement {
    Destructor destructor;
    void* object;
};

constexpr std::size_t kCapacity = 256;

// Libraries announce statics before this program's own statics are there: all of this stands in
// constant-initialised memory. Entries stay after the recording, for destructors that run late.
constinit std::array<Announcement, kCapacity> entries{};
constinit std::size_t entryCount = 0;
constinit std::array<std::size_t, kCapacity> runs{};
constinit std::size_t runCount = 0;
constinit bool recording = false;
constinit std::size_t begin = 0; // of the current recording, in entries

void runRecorded(void* argument) {
    const auto* const entry = static_cast<const Announcement*>(argument);
    const auto position = static_cast<std::size_t>(entry - entries.data());
    if (position >= begin)
        runs[runCount++] = position - begin;
    entry->destructor(entry->object);
}

int announce(Destructor destructor, void* object, void* module) {
    static constinit AtExit next = nullptr;
    if (next == nullptr)
        next = reinterpret_cast<AtExit>(dlsym(RTLD_NEXT, "__cxa_atexit"));
    if (!recording || entryCount == kCapacity)
        return next(destructor, object, module);
    auto& entry = entries[entryCount++];
    entry = {.destructor = destructor, .object = object};
    return next(runRecorded, &entry, module);
}

} // namespace

AtExitRecording::AtExitRecording() {
    begin = entryCount;
    runCount = 0;
}

AtExitRecording::~AtExitRecording() {
    recording = false;
    begin = kCapacity;
}

void AtExitRecording::record(bool on) { recording = on; }

std::vector<const void*> AtExitRecording::announced() {
    std::vector<const void*> objects;
    for (std::size_t i = begin; i != entryCount; ++i)
        objects.push_back(entries[i].object);
    return objects;
}

std::vector<std::size_t> AtExitRecording::destroyed() {
    return {runs.begin(), runs.begin() + static_cast<std::ptrdiff_t>(runCount)};
}

} // namespace corvane::workbench::plugins::s7Driver::testing

// The name is the one that the C++ ABI calls; the module finds it in the program before the C
// library's.
extern "C" __attribute__((visibility("default"))) int
__cxxabiv1::__cxa_atexit(void (*destructor)(void*), void* object, void* module) noexcept {
    return corvane::workbench::plugins::s7Driver::testing::announce(destructor, object, module);
}
