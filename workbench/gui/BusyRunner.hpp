#pragma once

#include <QObject>
#include <QString>

#include <condition_variable>
#include <cstdint>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace corvane::workbench::gui {

/// Runs one long job at a time on a thread of its own, so that the window stays alive.
///
/// The projects of the core know no threads. From `run` until the job's end the job has the
/// project to itself: whoever works on it between events asks `isBusy` first, and `began` hides
/// everything that would look at it when it is painted.
class BusyRunner : public QObject {
    Q_OBJECT

public:
    using Job = std::move_only_function<void()>;
    /// Told how the job ended: null, or what it threw.
    using Done = std::move_only_function<void(const std::exception_ptr&)>;

    explicit BusyRunner(QObject* parent = nullptr) : QObject(parent) {}
    ~BusyRunner() override;

    /// Starts a job, of which `title` tells the user. A job that is done within a blink ends before
    /// this returns and nobody sees that it was one; `done` is called in any case, on the calling
    /// thread. Must not be called while `isBusy`.
    void run(const QString& title, Job job, Done done);

    [[nodiscard]] bool isBusy() const { return busy_; }

    /// To be called before anything is changed for a job that is about to be run: emits
    /// `preparing`, which `run` does otherwise.
    void prepare();

    /// Waits for a job that runs, and forgets it: `done` is not called.
    void abandon();

signals:
    /// A job is about to be run; everything still looks as it did.
    void preparing();
    void began(const QString& title);
    void ended();

private:
    void finish(std::uint64_t run);

    std::thread thread_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool jobDone_ = false;       // guarded by mutex_
    std::exception_ptr failure_; // guarded by mutex_
    Done done_;
    std::uint64_t run_ = 0; // counts the jobs
    bool busy_ = false;
    bool prepared_ = false;
    bool shown_ = false; // `began` was emitted, `ended` was not yet
};

} // namespace corvane::workbench::gui
