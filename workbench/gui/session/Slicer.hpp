#pragma once

#include "workbench/gui/session/BusyRunner.hpp"

#include <QTimer>

#include <functional>

namespace corvane::workbench::gui {

/// Does long work on the project in slices between events, each shorter than a frame of the screen.
class Slicer : public QObject {
public:
    /// Does a little, well under a millisecond; true when nothing is left to do.
    using Step = std::move_only_function<bool()>;

    /// While `runner` is busy the work rests.
    Slicer(BusyRunner& runner, QObject* parent);

    /// Begins new work; what was under way is dropped.
    void start(Step step);
    void stop();
    [[nodiscard]] bool isRunning() const { return step_ != nullptr; }

private:
    void runSlice();

    BusyRunner* runner_;
    QTimer timer_;
    Step step_;
    unsigned generation_ = 0; // tells whether a step has started other work
};

} // namespace corvane::workbench::gui
