#pragma once

#include <corvane/utils/thread/Owner.hpp>

#include <QObject>
#include <QString>

#include <atomic>
#include <cstdint>
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

    /// Whether the user may end a job before it is done.
    enum class Stoppable : std::uint8_t { no, yes };

    /// Starts a job, of which `title` tells the user. A job that is done within a blink ends before
    /// this returns and nobody sees that it was one; `done` is called in any case, on the calling
    /// thread, which owns the model. Must not be called while `isBusy`. Throws std::system_error
    /// where no thread can be had.
    void run(const QString& title, Job job, Done done, Stoppable stoppable = Stoppable::no);

    /// Called by a job: how much of its work is done. False when it shall stop, if it is stoppable.
    bool tell(std::size_t done, std::size_t total);
    /// What the job that runs has told last, in percent; below 0 for nothing yet.
    [[nodiscard]] int percent() const { return percent_; }
    [[nodiscard]] bool canBeStopped() const { return stoppable_ == Stoppable::yes; }
    /// Asks the job that runs, or that is being prepared, to stop.
    void stop() { stopWanted_ = busy_ || prepared_; }

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
    Stoppable stoppable_ = Stoppable::no;
    std::atomic<int> percent_ = -1;
    std::atomic<bool> stopWanted_ = false;
    bool busy_ = false;
    bool prepared_ = false;
    bool shown_ = false; // `began` was emitted, `ended` was not yet
};

} // namespace corvane::workbench::gui
