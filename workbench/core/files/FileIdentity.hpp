#pragma once

#include <sys/stat.h>

#include <cstdint>
#include <filesystem>

namespace corvane::workbench::core {

/// What tells one state of a file on disk from another: equal identities mean that nobody has
/// written the file meanwhile, as far as the time stamps of its file system can tell. A
/// default-constructed identity is that of no file.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0; // bytes
    std::int64_t modifiedSeconds = 0;
    std::int64_t modifiedNanoseconds = 0;

    [[nodiscard]] bool exists() const { return *this != FileIdentity(); }

    /// Whether both are states of one and the same file.
    [[nodiscard]] bool isSameFile(const FileIdentity& other) const {
        return device == other.device && inode == other.inode;
    }

    friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// The identity of a file, which need not exist; of what a symbolic link leads to. Throws
/// std::system_error when the file cannot be asked.
[[nodiscard]] FileIdentity identityOf(const std::filesystem::path& file);

/// The identity that the system's answer tells of.
[[nodiscard]] FileIdentity identityOf(const struct ::stat& status);

} // namespace corvane::workbench::core
