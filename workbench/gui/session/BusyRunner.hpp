#pragma once

#include <corvane/utils/thread/Owner.hpp>

#include <QObject>
#include <QString>

#include <exception>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace corvane::workbench::gui {

/// Runs one long job at a time on a thread of its own, so that the window stays alive.
///
/// A job owns the model: `run` hands it over, and the calling thread has it back when it calls
/// `done`. In between the window touches nothing of it: whoever works on it between events asks
/// `isBusy` first, and `began` hides everything that would look at it when it is painted.
class BusyRunner : public QObject {
    Q_OBJECT

public:
    /// What it has captured goes on the job's thread, before the model is handed back. What only
    /// the job needs of the model belongs in it, and nobody else may hold that.
    using Job = std::move_only_function<void()>;
    /// Told how the job ended: null, or what it threw. May run the next job; what it has captured
    /// goes on the calling thread, when that owns the model.
    using Done = std::move_only_function<void(const std::exception_ptr&)>;

    explicit BusyRunner(QObject* parent = nullptr);
    ~BusyRunner() override;

    /// Starts a job, of which `title` tells the user. A job that is done within a blink ends before
    /// this returns and nobody sees that it was one; `done` is called in any case, on the calling
    /// thread, which owns the model. Must not be called while `isBusy`. Throws std::system_error
    /// where no thread can be had.
    void run(const QString& title, Job job, Done done);

    /// Whether a job runs, or has ended and `done` has yet to be called.
    [[nodiscard]] bool isBusy() const { return busy_; }

    /// To be called before anything is changed for a job that is about to be run: emits
    /// `preparing`, which `run` does otherwise.
    void prepare();

    /// Waits for a job that runs, and forgets it: `done` is not called.
    void abandon();

    /// Lets go of something that belongs to the model, whoever owns that now: at once, or when the
    /// job that runs has ended.
    void letGo(std::shared_ptr<void> object);

signals:
    /// A job is about to be run; everything still looks as it did.
    void preparing();
    void began(const QString& title);
    void ended();

    /// From the job's thread, after it has given the model back.
    void jobEnded(QPrivateSignal);

private:
    void work(Job job);
    void finishIfEnded();
    void finish();
    void takeBack();

    std::thread thread_;
    utils::thread::Handover toJob_;
    utils::thread::Handover fromJob_;
    std::exception_ptr failure_; // the model's owner's
    Done done_;
    std::vector<std::shared_ptr<void>> letGo_;
    bool busy_ = false;
    bool prepared_ = false;
    bool shown_ = false; // `began` was emitted, `ended` was not yet
};

} // namespace corvane::workbench::gui
