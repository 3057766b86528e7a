#include "workbench/gui/BusyRunner.hpp"

#include <chrono>
#include <utility>

namespace corvane::workbench::gui {

namespace {

// Shorter than what an eye notices as a delay.
constexpr std::chrono::milliseconds kGraceTime(40);

} // namespace

BusyRunner::~BusyRunner() { abandon(); }

void BusyRunner::abandon() {
    if (!busy_)
        return;
    thread_.join();
    busy_ = false;
    done_ = nullptr;
}

void BusyRunner::prepare() {
    // One job may follow another: what is shown meanwhile stays.
    if (prepared_ || shown_)
        return;
    prepared_ = true;
    emit preparing();
}

void BusyRunner::run(const QString& title, Job job, Done done) {
    Q_ASSERT(!busy_);
    prepare();
    busy_ = true;
    done_ = std::move(done);
    jobDone_ = false;
    failure_ = nullptr;
    const auto run = ++run_;
    thread_ = std::thread([this, run, job = std::move(job)]() mutable {
        std::exception_ptr failure;
        try {
            job();
        } catch (...) {
            failure = std::current_exception();
        }
        {
            const std::lock_guard lock(mutex_);
            failure_ = failure;
            jobDone_ = true;
        }
        wake_.notify_one();
        QMetaObject::invokeMethod(this, [this, run] { finish(run); }, Qt::QueuedConnection);
    });

    std::unique_lock lock(mutex_);
    const bool quick = wake_.wait_for(lock, kGraceTime, [this] { return jobDone_; });
    lock.unlock();
    if (quick) {
        finish(run);
    } else {
        shown_ = true;
        emit began(title);
    }
}

void BusyRunner::finish(std::uint64_t run) {
    // A quick job was finished by `run` itself: its own call comes late.
    if (!busy_ || run != run_)
        return;
    thread_.join();
    busy_ = false;
    prepared_ = false;
    const auto failure = std::exchange(failure_, nullptr);
    auto done = std::exchange(done_, nullptr);
    done(failure);
    if (!shown_ || busy_)
        return;
    shown_ = false;
    emit ended();
}

} // namespace corvane::workbench::gui
