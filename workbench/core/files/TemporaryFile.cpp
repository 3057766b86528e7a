#include "workbench/core/files/TemporaryFile.hpp"

#include <corvane/utils/core/Uuid.hpp>
#include <corvane/utils/io/SystemError.hpp>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

namespace corvane::workbench::core {

namespace {

namespace fs = std::filesystem;
using utils::core::Uuid;
using utils::io::throwSystemError;

constexpr std::string_view kSuffix = ".tmp";
constexpr std::size_t kUuidLength = 36;
constexpr std::size_t kLongestName = 255; // bytes, of a name in a folder

// The beginning that the names of all temporary files of a file have in common.
std::string stemOf(std::string_view name) {
    constexpr std::size_t kLongestStem = kLongestName - 1 - kUuidLength - kSuffix.size();
    if (name.size() > kLongestStem) {
        name = name.substr(0, kLongestStem);
        constexpr unsigned char kContinuationMask = 0xC0;
        constexpr unsigned char kContinuation = 0x80;
        // A character that was cut in two goes: some file systems refuse half ones.
        while (!name.empty() &&
               (static_cast<unsigned char>(name.back()) & kContinuationMask) == kContinuation)
            name.remove_suffix(1);
        if (!name.empty() && static_cast<unsigned char>(name.back()) >= kContinuationMask)
            name.remove_suffix(1);
    }
    return std::string(name) + ".";
}

bool isTemporaryName(std::string_view name, std::string_view stem) {
    return name.size() == stem.size() + kUuidLength + kSuffix.size() && name.starts_with(stem) &&
           name.ends_with(kSuffix) && Uuid::parse(name.substr(stem.size(), kUuidLength));
}

bool lockNow(const Descriptor& file) { return ::flock(file.number(), LOCK_EX | LOCK_NB) == 0; }

void removeUnlocked(const FilePlace& place, const std::string& name) {
    const auto file = place.open(name, O_RDWR | O_NONBLOCK);
    if (file.isOpen() && S_ISREG(file.status().st_mode) && lockNow(file))
        static_cast<void>(::unlinkat(place.folder(), name.c_str(), 0));
}

} // namespace

TemporaryFile::TemporaryFile(const FilePlace& place, unsigned mode) : place_(&place) {
    for (;;) {
        name_ = stemOf(place.name()) + Uuid::createVersion4().toString() + std::string(kSuffix);
        file_ = place.open(name_, O_RDWR | O_CREAT | O_EXCL, mode);
        if (!file_.isOpen())
            throwSystemError("cannot create the file");
        // Before it was locked, somebody may have taken it for a leftover.
        static_cast<void>(lockNow(file_));
        if (file_.status().st_nlink != 0)
            return;
    }
}

TemporaryFile::~TemporaryFile() {
    if (!name_.empty())
        static_cast<void>(::unlinkat(place_->folder(), name_.c_str(), 0));
}

void TemporaryFile::replace() {
    if (::renameat(place_->folder(), name_.c_str(), place_->folder(), place_->name().c_str()) != 0)
        throwSystemError("cannot replace the file");
    name_.clear();
}

void TemporaryFile::occupy() {
    const auto* const from = name_.c_str();
    const auto* const to = place_->name().c_str();
    const int folder = place_->folder();
    if (::renameat2(folder, from, folder, to, RENAME_NOREPLACE) == 0) {
        name_.clear();
        return;
    }
    // Not every file system can do this. A second name, which is refused where there is one, and
    // the first one's removal come to the same; and where there are no second names either, it
    // was looked at just now whether the place is empty.
    if (errno == EINVAL || errno == ENOSYS) {
        if (::linkat(folder, from, folder, to, 0) == 0)
            return;
        if (errno == EPERM || errno == ENOTSUP) {
            replace();
            return;
        }
    }
    throwSystemError("cannot create the file");
}

void TemporaryFile::removeLeftovers(const FilePlace& place) {
    const auto stem = stemOf(place.name());
    std::error_code unreadable; // then nothing of it can be known, and the save goes on
    for (const auto& entry : fs::directory_iterator(place.folderPath(), unreadable)) {
        const auto name = entry.path().filename().string();
        if (isTemporaryName(name, stem))
            removeUnlocked(place, name);
    }
}

} // namespace corvane::workbench::core
