#pragma once

#include "workbench/core/files/FilePlace.hpp"

#include <chrono>
#include <filesystem>

namespace corvane::workbench::core {

/// The right to change a file, among all programs that ask for it like this: one at a time has it,
/// from before it reads the file until it has replaced it, so that none replaces what it has not
/// read. It does not hold back a program that does not ask.
///
/// The system takes the lock back when its holder ends, however that comes, so nothing is left of
/// one that was killed; and no file stands for it, since the lock is on the file itself. That file
/// goes when it is replaced, and with it the lock: who waited finds the new one and locks that.
class FileLock {
public:
    /// Holds nothing.
    FileLock() = default;
    FileLock(FileLock&&) noexcept = default;
    FileLock& operator=(FileLock&&) noexcept = default;
    ~FileLock();

    /// Waits until nobody else has the right, for as long as `patience`, then throws
    /// std::runtime_error. Holds nothing where there is no regular file yet (creating it is
    /// arbitrated by the folder), where the file cannot be opened (reading it will say why), or
    /// where the file system knows no locks.
    [[nodiscard]] static FileLock acquire(const std::filesystem::path& file,
                                          std::chrono::milliseconds patience = kPatience);

    [[nodiscard]] bool holds() const { return file_.isOpen(); }

    /// A change takes a fraction of a second, some seconds in a large project: who has not got the
    /// right by then is better told than kept waiting.
    static constexpr std::chrono::milliseconds kPatience = std::chrono::minutes(1);

private:
    explicit FileLock(Descriptor file) : file_(std::move(file)) {}

    Descriptor file_;
};

} // namespace corvane::workbench::core
