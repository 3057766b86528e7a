#include "workbench/core/files/FileIdentity.hpp"

#include <sys/stat.h>

#include <cerrno>
#include <system_error>

namespace corvane::workbench::core {

FileIdentity identityOf(const std::filesystem::path& file) {
    struct stat status{};
    if (::stat(file.c_str(), &status) != 0) {
        if (errno == ENOENT)
            return {};
        throw std::system_error(errno, std::generic_category(), file.string());
    }
    return identityOf(status);
}

FileIdentity identityOf(const struct ::stat& status) {
    return {.device = status.st_dev,
            .inode = status.st_ino,
            .size = static_cast<std::uint64_t>(status.st_size),
            .modifiedSeconds = status.st_mtim.tv_sec,
            .modifiedNanoseconds = status.st_mtim.tv_nsec};
}

} // namespace corvane::workbench::core
