#pragma once

#include "workbench/gui/session/ProjectSession.hpp"

#include <QDateTime>
#include <QDir>
#include <QLockFile>
#include <QTimer>

#include <memory>
#include <optional>

#include <sys/types.h>

namespace corvane::workbench::gui {

/// Keeps unsaved work in a file of the user's data, so that a crash does not lose it.
///
/// Each running program has a file of its own there, and a lock that says that it lives. What lies
/// there without a living program is what a crash has left.
class Recovery : public QObject {
    Q_OBJECT

public:
    /// Unsaved work is written after this time without a change at the latest.
    static constexpr int kDelay = 5000; // milliseconds

    /// `folder` is made when it is needed.
    Recovery(ProjectSession& session, const QString& folder);
    /// A program that ends in good order leaves nothing behind.
    ~Recovery() override;

    /// The project's own file, empty for none: it is kept with the work.
    void setProjectFile(const QString& file) { projectFile_ = file; }

    /// Writes what is unsaved now and waits for it; removes what was written where nothing is.
    void keepNow();

    struct Remains {
        QString file;        // holds the work
        QString projectFile; // of the project; empty if it had none
        QDateTime written;   // the time of the work
    };
    /// What a crash has left, one at a time.
    [[nodiscard]] std::optional<Remains> find() const;
    static void discard(const Remains& remains);

private:
    void keep();
    void write();
    void reap(bool wait);
    void removeOwn();
    [[nodiscard]] QString own(const char* suffix) const;

    ProjectSession* session_;
    QDir folder_;
    QString name_;
    QString projectFile_;
    std::unique_ptr<QLockFile> lock_;
    QTimer delay_;
    QTimer reaper_;
    pid_t writer_ = 0; // the process that writes; 0 for none
};

} // namespace corvane::workbench::gui
