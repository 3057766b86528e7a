#include "workbench/gui/session/Recovery.hpp"

#include "workbench/core/files/FileReplacement.hpp"
#include "workbench/core/project/DocumentWriter.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QFile>
#include <QUuid>

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

namespace corvane::workbench::gui {

namespace {

constexpr const char* kWork = ".json";
constexpr const char* kOrigin = ".origin"; // holds the path of the project's own file
constexpr const char* kLock = ".lock";
constexpr int kReapInterval = 200; // milliseconds

QString withSuffix(const QString& work, const char* suffix) {
    return work.chopped(static_cast<qsizetype>(std::string_view(kWork).size())) +
           QLatin1String(suffix);
}

} // namespace

Recovery::Recovery(ProjectSession& session, const QString& folder)
    : session_(&session),
      folder_(folder),
      name_(QUuid::createUuid().toString(QUuid::WithoutBraces)) {
    delay_.setSingleShot(true);
    delay_.setInterval(kDelay);
    reaper_.setInterval(kReapInterval);
    connect(&delay_, &QTimer::timeout, this, &Recovery::keep);
    connect(&reaper_, &QTimer::timeout, this, [this] { reap(false); });
    connect(session_, &ProjectSession::historyUpdated, this, [this] {
        if (!delay_.isActive())
            delay_.start();
    });
}

Recovery::~Recovery() {
    reap(true);
    removeOwn();
}

QString Recovery::own(const char* suffix) const {
    return folder_.filePath(name_ + QLatin1String(suffix));
}

void Recovery::keepNow() {
    delay_.stop();
    reap(true);
    keep();
    reap(true);
}

void Recovery::keep() {
    if (session_->isBusy() || writer_ != 0) {
        delay_.start();
        return;
    }
    if (session_->isModified())
        write();
    else
        removeOwn();
}

// A copy of the process writes a copy of the project, as it is now, while the user goes on.
void Recovery::write() {
    if (!lock_) {
        if (!folder_.mkpath(QStringLiteral(".")))
            return;
        lock_ = std::make_unique<QLockFile>(own(kLock));
        lock_->setStaleLockTime(0);
        if (!lock_->tryLock(0))
            return;
    }
    if (QFile origin(own(kOrigin)); origin.open(QIODevice::WriteOnly))
        origin.write(projectFile_.toUtf8());
    const auto path = toUtf8(own(kWork));
    const pid_t child = ::fork();
    if (child > 0) {
        writer_ = child;
        reaper_.start();
    }
    if (child != 0)
        return;
    int status = 0;
    try {
        core::replaceFile(path, std::nullopt, [this](utils::io::OutputStream& stream) {
            core::writeProject(stream, session_->plugins(), session_->root());
        });
    } catch (...) {
        status = 1;
    }
    ::_exit(status);
}

void Recovery::reap(bool wait) {
    if (writer_ == 0)
        return;
    pid_t ended = 0;
    do
        ended = ::waitpid(writer_, nullptr, wait ? 0 : WNOHANG);
    while (ended < 0 && errno == EINTR);
    if (ended == 0)
        return;
    writer_ = 0;
    reaper_.stop();
}

void Recovery::removeOwn() {
    if (!lock_)
        return;
    QFile::remove(own(kWork));
    QFile::remove(own(kOrigin));
    lock_.reset();
}

std::optional<Recovery::Remains> Recovery::find() const {
    const auto works = folder_.entryInfoList({QStringLiteral("*") + QLatin1String(kWork)},
                                             QDir::Files, QDir::Time);
    for (const auto& work : works) {
        const auto file = work.absoluteFilePath();
        if (work.fileName() == name_ + QLatin1String(kWork))
            continue;
        QLockFile lock(withSuffix(file, kLock));
        lock.setStaleLockTime(0);
        if (!lock.tryLock(0))
            continue; // its program lives
        QFile origin(withSuffix(file, kOrigin));
        const bool known = origin.open(QIODevice::ReadOnly);
        return Remains{file, known ? QString::fromUtf8(origin.readAll()) : QString(),
                       work.lastModified()};
    }
    return std::nullopt;
}

void Recovery::discard(const Remains& remains) {
    QFile::remove(remains.file);
    QFile::remove(withSuffix(remains.file, kOrigin));
    QFile::remove(withSuffix(remains.file, kLock));
}

} // namespace corvane::workbench::gui
