#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <optional>
#include <string>
#include <utility>

namespace corvane::workbench::core {

/// An open file or folder of the system's, closed at the end. Negative where opening failed; the
/// reason is in `errno` then.
class Descriptor {
public:
    explicit Descriptor(int number = -1) : number_(number) {}
    Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(number_, other.number_);
        return *this;
    }
    ~Descriptor();

    [[nodiscard]] bool isOpen() const { return number_ >= 0; }
    [[nodiscard]] int number() const { return number_; }

    /// What the system says of what is open. Throws std::system_error when it says nothing.
    [[nodiscard]] struct ::stat status() const;

private:
    int number_;
};

/// Where a file stands or will stand: a name in a folder that was opened once. Whatever happens to
/// the folder's path meanwhile, all that is done through a place is done in that folder.
class FilePlace {
public:
    /// The place of what the path leads to through symbolic links, whether or not there is
    /// anything yet. Throws std::system_error when there is no such folder, or too many links.
    explicit FilePlace(const std::filesystem::path& file);

    [[nodiscard]] const std::string& name() const { return name_; }

    /// The folder, for the calls of the system that take one.
    [[nodiscard]] int folder() const { return folder_.number(); }

    /// The folder's path, as it was when it was opened.
    [[nodiscard]] const std::filesystem::path& folderPath() const { return folderPath_; }

    /// Opens a file of the folder. Symbolic links are not followed: who may write in the folder
    /// could lead us elsewhere by one.
    [[nodiscard]] Descriptor open(const std::string& name, int flags, unsigned mode = 0) const;

    /// What stands at the place now; nothing where there is nothing. Throws std::system_error when
    /// the system does not say.
    [[nodiscard]] std::optional<struct ::stat> status() const;

    /// Brings the folder's names to the disk, as far as its file system can.
    void sync() const;

private:
    std::filesystem::path folderPath_;
    std::string name_;
    Descriptor folder_;
};

} // namespace corvane::workbench::core
