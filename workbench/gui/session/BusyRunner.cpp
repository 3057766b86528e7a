#include "workbench/gui/session/BusyRunner.hpp"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane::workbench::gui {

namespace {

// Shorter than what an eye notices as a delay.
constexpr std::chrono::milliseconds kGraceTime(40);

} // namespace

BusyRunner::BusyRunner(QObject* parent) : QObject(parent) {
    connect(this, &BusyRunner::jobEnded, this, &BusyRunner::finishIfEnded, Qt::QueuedConnection);
}

BusyRunner::~BusyRunner() { abandon(); }

void BusyRunner::abandon() {
    if (!busy_)
        return;
    fromJob_.take();
    takeBack();
    failure_ = nullptr;
    done_ = nullptr;
}

void BusyRunner::prepare() {
    // One job may follow another: what is shown meanwhile stays.
    if (prepared_ || shown_)
        return;
    prepared_ = true;
    emit preparing();
}

void BusyRunner::run(const QString& title, Job job, Done done, Stoppable stoppable) {
    Q_ASSERT(!busy_);
    prepare();
    stoppable_ = stoppable;
    percent_ = -1;
    thread_ = std::thread([this, job = std::move(job)]() mutable { work(std::move(job)); });
    busy_ = true;
    done_ = std::move(done);
    toJob_.give();
    if (fromJob_.takeWithin(kGraceTime)) {
        finish();
    } else {
        shown_ = true;
        emit began(title);
    }
}

// What is told outside of a job reaches nobody.
bool BusyRunner::tell(std::size_t done, std::size_t total) {
    percent_ = static_cast<int>(done * 100 / std::max<std::size_t>(total, 1));
    return stoppable_ == Stoppable::no || !stopWanted_;
}

// On the thread of the job.
void BusyRunner::work(Job job) {
    toJob_.take();
    try {
        job();
    } catch (...) {
        failure_ = std::current_exception();
    }
    job = nullptr;
    fromJob_.give();
    emit jobEnded(QPrivateSignal());
}

void BusyRunner::finishIfEnded() {
    // Of a quick job, which `run` itself has finished, this tells late: there may be none now, or
    // the next one.
    if (busy_ && fromJob_.takeWithin({}))
        finish();
}

void BusyRunner::finish() {
    takeBack();
    prepared_ = false;
    const auto failure = std::exchange(failure_, nullptr);
    const auto done = std::make_shared<Done>(std::exchange(done_, nullptr));
    (*done)(failure);
    letGo(done);
    if (!shown_ || busy_)
        return;
    shown_ = false;
    emit ended();
}

// The job's thread has nothing more to do than to end.
void BusyRunner::takeBack() {
    thread_.join();
    busy_ = false;
    stopWanted_ = false;
    letGo_.clear();
}

void BusyRunner::letGo(std::shared_ptr<void> object) {
    if (busy_)
        letGo_.push_back(std::move(object));
}

} // namespace corvane::workbench::gui
