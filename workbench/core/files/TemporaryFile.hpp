#pragma once

#include "workbench/core/files/FileIdentity.hpp"
#include "workbench/core/files/FilePlace.hpp"

#include <string>

namespace corvane::workbench::core {

/// A new file beside the one that it will replace, removed at the end unless it did. It is called
/// NAME.UUID.tmp, after the first bytes of NAME where the whole name would be too long, and locked
/// as long as it is written.
class TemporaryFile {
public:
    /// Creates the file, empty, with the permissions `mode` less the umask. `place` must outlive
    /// it. Throws std::system_error.
    TemporaryFile(const FilePlace& place, unsigned mode);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    [[nodiscard]] const Descriptor& descriptor() const { return file_; }

    /// Takes the place of what stands there.
    void replace();
    /// Takes the place, which is empty; std::system_error (file_exists) where it is not.
    void occupy();

    /// Removes what processes that were killed have left at this place: the temporary files that
    /// nobody has locked. Where the file system knows no locks they stay, since their writer may
    /// be at work.
    static void removeLeftovers(const FilePlace& place);

private:
    const FilePlace* place_;
    std::string name_; // empty: it is none any more
    Descriptor file_;
};

} // namespace corvane::workbench::core
