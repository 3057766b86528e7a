#include "workbench/gui/session/Slicer.hpp"

#include <QElapsedTimer>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr qint64 kSliceMilliseconds = 8;

} // namespace

Slicer::Slicer(BusyRunner& runner, QObject* parent) : QObject(parent), runner_(&runner) {
    timer_.setInterval(0);
    connect(&timer_, &QTimer::timeout, this, &Slicer::runSlice);
    connect(runner_, &BusyRunner::began, &timer_, &QTimer::stop);
    connect(runner_, &BusyRunner::ended, this, [this] {
        if (step_)
            timer_.start();
    });
}

void Slicer::start(Step step) {
    ++generation_;
    step_ = std::move(step);
    timer_.start();
}

void Slicer::stop() {
    ++generation_;
    step_ = nullptr;
    timer_.stop();
}

void Slicer::runSlice() {
    if (runner_->isBusy())
        return;
    QElapsedTimer time;
    time.start();
    const auto generation = generation_;
    auto step = std::exchange(step_, nullptr);
    bool finished = false;
    while (!finished && generation == generation_ && time.elapsed() < kSliceMilliseconds)
        finished = step();
    if (generation != generation_)
        return;
    if (finished)
        timer_.stop();
    else
        step_ = std::move(step);
}

} // namespace corvane::workbench::gui
