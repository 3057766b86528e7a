#include "workbench/core/files/FileReplacement.hpp"

#include "workbench/core/files/FilePlace.hpp"
#include "workbench/core/files/TemporaryFile.hpp"

#include <corvane/utils/io/FileOutputStream.hpp>
#include <corvane/utils/io/SystemError.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <initializer_list>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace corvane::workbench::core {

namespace {

namespace fs = std::filesystem;
using utils::io::retryInterrupted;
using utils::io::throwSystemError;
using Status = struct ::stat;

std::string textOf(std::string_view text, std::initializer_list<std::string_view> arguments) {
    return i18n::translateToUtf8("corvane::workbench::core::FileReplacement", text, arguments);
}

/// Why a file is not replaced, without its name.
class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

[[noreturn]] void refuse(std::string_view reason,
                         std::initializer_list<std::string_view> arguments = {}) {
    throw Refusal(textOf(reason, arguments));
}

// A rename would replace a file that its owner has protected from being written.
void expectWritable(const FilePlace& place) {
    if (::faccessat(place.folder(), place.name().c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        throwSystemError("cannot write the file");
}

void expectReplaceable(const FilePlace& place, const Status& old) {
    if (S_ISDIR(old.st_mode))
        throw std::system_error(std::make_error_code(std::errc::is_a_directory));
    if (!S_ISREG(old.st_mode))
        refuse("it is no regular file");
    expectWritable(place);
    if (old.st_nlink > 1)
        refuse("it has {} names (hard links), and the others would keep the old content",
               {std::to_string(old.st_nlink)});
}

// Who shares a file with a group keeps reading and writing it, whoever of them owns it.
bool isShared(const Status& old) {
    constexpr mode_t kGroupReadsAndWrites = S_IRGRP | S_IWGRP;
    return (old.st_mode & kGroupReadsAndWrites) == kGroupReadsAndWrites;
}

void takeOverOwner(const Descriptor& file, const Status& old) {
    const auto own = file.status();
    if (own.st_uid == old.st_uid && own.st_gid == old.st_gid)
        return;
    if (::fchown(file.number(), old.st_uid, old.st_gid) == 0)
        return;
    const bool hasGroup =
        own.st_gid == old.st_gid || ::fchown(file.number(), own.st_uid, old.st_gid) == 0;
    if (!hasGroup)
        refuse("it would no longer belong to its group");
    if (own.st_uid != old.st_uid && !isShared(old))
        refuse("it would no longer belong to its owner");
}

/// The value of an extended attribute; nothing where the file has none of this name.
std::optional<std::string> attributeOf(const Descriptor& file, const char* name) {
    const auto size = ::fgetxattr(file.number(), name, nullptr, 0);
    if (size < 0)
        return std::nullopt;
    std::string value(static_cast<std::size_t>(size), '\0');
    const auto read = ::fgetxattr(file.number(), name, value.data(), value.size());
    if (read < 0)
        return std::nullopt;
    value.resize(static_cast<std::size_t>(read));
    return value;
}

// Each name ends with a zero byte. Where there are no such attributes there are no names.
std::string attributeNamesOf(const Descriptor& file) {
    const auto size = ::flistxattr(file.number(), nullptr, 0);
    std::string names(size > 0 ? static_cast<std::size_t>(size) : 0, '\0');
    const auto read = names.empty() ? 0 : ::flistxattr(file.number(), names.data(), names.size());
    names.resize(read > 0 ? static_cast<std::size_t>(read) : 0);
    return names;
}

// What the system's own guards keep there (security.*, trusted.*) is theirs to set.
bool isUsers(std::string_view attribute) {
    return attribute.starts_with("user.") || attribute.starts_with("system.");
}

void takeOverAttributes(const Descriptor& file, const Descriptor& old) {
    const auto names = attributeNamesOf(old);
    for (std::size_t at = 0; at < names.size(); at = names.find('\0', at) + 1) {
        const auto* const name = names.c_str() + at;
        const auto value = attributeOf(old, name);
        if (!value || attributeOf(file, name) == value)
            continue;
        if (::fsetxattr(file.number(), name, value->data(), value->size(), 0) != 0 && isUsers(name))
            refuse("it would lose its attribute {}", {name});
    }
}

// The permissions come last, since a new owner or an access list changes them.
void takeOver(const Descriptor& file, const FilePlace& place, const Status& old) {
    takeOverOwner(file, old);
    if (const auto opened = place.open(place.name(), O_RDONLY | O_NONBLOCK); opened.isOpen())
        takeOverAttributes(file, opened);
    constexpr mode_t kPermissions = 07777;
    if (retryInterrupted([&] { return ::fchmod(file.number(), old.st_mode & kPermissions); }) != 0)
        throwSystemError("cannot set the permissions");
}

FileIdentity identityAt(const FilePlace& place) {
    const auto status = place.status();
    return status ? identityOf(*status) : FileIdentity();
}

FileIdentity replaceAt(const FilePlace& place, const fs::path& file,
                       const std::optional<FileIdentity>& expected,
                       function_ref<void(utils::io::OutputStream&)> write) {
    const auto expectUnchanged = [&] {
        if (expected && identityAt(place) != *expected)
            throw FileChangedError(file);
    };
    expectUnchanged();
    const auto old = place.status();
    if (old)
        expectReplaceable(place, *old);
    TemporaryFile::removeLeftovers(place);

    constexpr unsigned kPrivate = 0600;
    constexpr unsigned kOrdinary = 0666;
    TemporaryFile temporary(place, old ? kPrivate : kOrdinary);
    {
        utils::io::FileOutputStream stream(temporary.descriptor().number());
        write(stream);
        stream.sync();
    }
    if (old)
        takeOver(temporary.descriptor(), place, *old);
    expectUnchanged();
    if (expected && !expected->exists())
        temporary.occupy();
    else
        temporary.replace();
    place.sync();
    // Of the file that was written: at its place there may already be another one.
    return identityOf(temporary.descriptor().status());
}

} // namespace

FileChangedError::FileChangedError(const fs::path& file)
    : std::runtime_error(
          textOf("{} was changed by another program and is not overwritten", {file.native()})) {}

FileIdentity replaceFile(const fs::path& file, const std::optional<FileIdentity>& expected,
                         function_ref<void(utils::io::OutputStream&)> write) {
    const auto failure = [&] { return textOf("cannot write {}", {file.native()}); };
    try {
        return replaceAt(FilePlace(file), file, expected, write);
    } catch (const std::system_error& error) {
        if (error.code() == std::errc::file_exists && expected)
            throw FileChangedError(file);
        throw std::system_error(error.code(), failure());
    } catch (const Refusal& refusal) {
        throw std::runtime_error(failure() + ": " + refusal.what());
    }
}

} // namespace corvane::workbench::core
