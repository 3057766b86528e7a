#include "workbench/gui/session/FileWatch.hpp"

#include "workbench/gui/look/Text.hpp"

#include <system_error>

namespace corvane::workbench::gui {

namespace {

// A file that cannot be asked is as good as gone.
core::FileIdentity stateOf(const std::filesystem::path& file) {
    try {
        return core::identityOf(file);
    } catch (const std::system_error&) {
        return {};
    }
}

} // namespace

FileWatch::FileWatch(QObject* parent) : QObject(parent) {
    settle_.setSingleShot(true);
    settle_.setInterval(150);
    connect(&watcher_, &QFileSystemWatcher::fileChanged, &settle_, qOverload<>(&QTimer::start));
    // A file that is replaced is a new one; its folder tells of it.
    connect(&watcher_, &QFileSystemWatcher::directoryChanged, &settle_,
            qOverload<>(&QTimer::start));
    connect(&settle_, &QTimer::timeout, this, &FileWatch::look);
}

void FileWatch::watch(const std::filesystem::path& file,
                      const std::optional<core::FileIdentity>& known) {
    if (const auto watched = watcher_.files() + watcher_.directories(); !watched.isEmpty())
        watcher_.removePaths(watched);
    settle_.stop();
    file_ = file;
    if (file_.empty())
        return;
    known_ = known ? *known : stateOf(file_);
    told_ = known_;
    settle_.start(); // what happened before the watch
    const auto path = toQt(std::string_view(file_.native()));
    const auto folder = std::filesystem::absolute(file_).parent_path();
    watcher_.addPaths({path, toQt(std::string_view(folder.native()))});
}

bool FileWatch::isChanged() const { return !file_.empty() && stateOf(file_) != known_; }

void FileWatch::look() {
    const auto path = toQt(std::string_view(file_.native()));
    if (!watcher_.files().contains(path))
        watcher_.addPath(path);
    const auto state = stateOf(file_);
    if (state == told_)
        return;
    told_ = state;
    if (state != known_)
        emit changed();
}

} // namespace corvane::workbench::gui
