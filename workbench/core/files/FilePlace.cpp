#include "workbench/core/files/FilePlace.hpp"

#include <corvane/utils/io/SystemError.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace corvane::workbench::core {

namespace {

namespace fs = std::filesystem;
using utils::io::retryInterrupted;
using utils::io::throwSystemError;

// What a symbolic link leads to, whether or not there is anything yet.
fs::path targetOf(const fs::path& file) {
    constexpr int kMostLinks = 40; // as many as the system follows
    auto target = file;
    for (int links = 0; fs::is_symlink(target); ++links) {
        if (links == kMostLinks)
            throw std::system_error(std::make_error_code(std::errc::too_many_symbolic_link_levels));
        target = target.parent_path() / fs::read_symlink(target);
    }
    return fs::absolute(target);
}

// A folder that may be written and not read has names all the same.
Descriptor openFolder(const fs::path& folder) {
    constexpr int kFlags = O_DIRECTORY | O_CLOEXEC;
    const auto opened = [&](int flags) {
        return Descriptor(retryInterrupted([&] { return ::open(folder.c_str(), kFlags | flags); }));
    };
    auto readable = opened(O_RDONLY);
    if (readable.isOpen() || errno != EACCES)
        return readable;
    return opened(O_PATH);
}

} // namespace

Descriptor::~Descriptor() {
    if (isOpen())
        ::close(number_);
}

struct ::stat Descriptor::status() const {
    struct ::stat status{};
    if (::fstat(number_, &status) != 0)
        throwSystemError("cannot ask for the state of the file");
    return status;
}

FilePlace::FilePlace(const fs::path& file) {
    const auto target = targetOf(file);
    folderPath_ = target.parent_path();
    name_ = target.filename();
    folder_ = openFolder(folderPath_);
    if (!folder_.isOpen())
        throwSystemError("cannot open the folder");
}

Descriptor FilePlace::open(const std::string& name, int flags, unsigned mode) const {
    return Descriptor(retryInterrupted(
        [&] { return ::openat(folder(), name.c_str(), flags | O_NOFOLLOW | O_CLOEXEC, mode); }));
}

std::optional<struct ::stat> FilePlace::status() const {
    struct ::stat status{};
    if (::fstatat(folder(), name_.c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0)
        return status;
    if (errno != ENOENT)
        throwSystemError("cannot ask for the state of the file");
    return std::nullopt;
}

// A rename is on the disk only when its folder is. Some file systems cannot do this; the rename
// itself is done by then, so that is no failure.
void FilePlace::sync() const { static_cast<void>(::fsync(folder())); }

} // namespace corvane::workbench::core
