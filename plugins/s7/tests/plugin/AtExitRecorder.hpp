#pragma once

#include <cstddef>
#include <vector>

/// Watches the destructors of statics: while a library comes up, each static whose destructor shall
/// run at its end announces it through `__cxa_atexit`, which the program of this test defines in
/// front of the C library's.
namespace corvane::workbench::plugins::s7Driver::testing {

/// Records the statics that announce their destructors while `record` is on, and the order in which
/// those destructors run, whenever that is. There is one recording at a time.
class AtExitRecording {
public:
    AtExitRecording();
    AtExitRecording(const AtExitRecording&) = delete;
    AtExitRecording& operator=(const AtExitRecording&) = delete;
    ~AtExitRecording();

    static void record(bool on);

    /// The statics in the order in which they announced themselves; null for a destructor that
    /// takes no object.
    [[nodiscard]] static std::vector<const void*> announced();

    /// The statics in the order in which their destructors ran, as positions in `announced`.
    [[nodiscard]] static std::vector<std::size_t> destroyed();
};

} // namespace corvane::workbench::plugins::s7Driver::testing
