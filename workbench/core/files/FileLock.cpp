#include "workbench/core/files/FileLock.hpp"

#include "workbench/core/files/FileIdentity.hpp"

#include <corvane/utils/io/SystemError.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <fcntl.h>
#include <sys/file.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace corvane::workbench::core {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;
using utils::io::retryInterrupted;

std::optional<FilePlace> placeOf(const std::filesystem::path& file) try {
    return FilePlace(file);
} catch (const std::system_error&) {
    return std::nullopt;
}

// Some network file systems lock only what is open for writing. A pipe, which would keep whoever
// opens it waiting, is no project.
Descriptor openToLock(const FilePlace& place) {
    auto file = place.open(place.name(), O_RDWR | O_NONBLOCK);
    if (!file.isOpen() && (errno == EACCES || errno == EROFS || errno == EPERM))
        file = place.open(place.name(), O_RDONLY | O_NONBLOCK);
    if (file.isOpen() && !S_ISREG(file.status().st_mode))
        return Descriptor();
    return file;
}

enum class Attempt { locked, taken, impossible };

Attempt tryToLock(const Descriptor& file) {
    if (retryInterrupted([&] { return ::flock(file.number(), LOCK_EX | LOCK_NB); }) == 0)
        return Attempt::locked;
    return errno == EWOULDBLOCK ? Attempt::taken : Attempt::impossible;
}

// Whoever had the lock may have replaced the file, and what is locked now is the old one.
bool isStillThere(const FilePlace& place, const Descriptor& file) {
    const auto now = place.status();
    return now && identityOf(*now).isSameFile(identityOf(file.status()));
}

} // namespace

// The lock belongs to the open file, of which a copy of the process (the desktop saves unsaved work
// by one) has a copy as well: closing this one alone would not end it.
FileLock::~FileLock() {
    if (holds())
        ::flock(file_.number(), LOCK_UN);
}

FileLock FileLock::acquire(const std::filesystem::path& file, milliseconds patience) {
    constexpr milliseconds kLongestPause(50);
    const auto place = placeOf(file);
    if (!place)
        return {};
    const auto end = steady_clock::now() + patience;
    milliseconds pause(1);
    for (;;) {
        auto opened = openToLock(*place);
        if (!opened.isOpen())
            return {};
        const auto attempt = tryToLock(opened);
        if (attempt == Attempt::impossible)
            return {};
        if (attempt == Attempt::locked) {
            FileLock lock(std::move(opened));
            if (isStillThere(*place, lock.file_))
                return lock;
            continue;
        }
        if (steady_clock::now() >= end)
            throw std::runtime_error(i18n::translateToUtf8(
                "corvane::workbench::core::FileLock",
                "{} is being changed by another program, which does not come to an end",
                {file.native()}));
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, kLongestPause);
    }
}

} // namespace corvane::workbench::core
