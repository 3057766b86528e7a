#include "workbench/core/plugins/ModuleFile.hpp"

#include "workbench/core/files/FilePlace.hpp"

#include <corvane/utils/io/SystemError.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::workbench::core {

namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);

[[noreturn]] void refuse(std::string_view text,
                         std::initializer_list<std::string_view> arguments = {}) {
    throw std::runtime_error(
        i18n::translateToUtf8("corvane::workbench::core::ModuleFile", text, arguments));
}

Descriptor open(const std::filesystem::path& path, int flags) {
    // A pipe opens at once, too, and is refused then.
    Descriptor descriptor(utils::io::retryInterrupted(
        [&] { return ::open(path.c_str(), flags | O_RDONLY | O_CLOEXEC | O_NONBLOCK); }));
    if (!descriptor.isOpen())
        utils::io::throwSystemError("cannot open the file");
    return descriptor;
}

/// Whether nobody but the system's owner and whoever runs the program may write there. A group that
/// is the user's own is no other: on many systems each user has one.
bool isOurs(const struct ::stat& status) {
    const bool ownGroup = status.st_gid == ::getegid() && status.st_uid == ::geteuid();
    const bool groupMayWrite = (status.st_mode & S_IWGRP) != 0 && status.st_gid != 0 && !ownGroup;
    const bool owned = status.st_uid == 0 || status.st_uid == ::geteuid();
    return owned && !groupMayWrite && (status.st_mode & S_IWOTH) == 0;
}

/// The bytes at `offset`, as many as `object` has, where the file has them.
template <class Object>
bool readObjects(const Descriptor& file, std::uint64_t offset, Object* objects, std::size_t count) {
    const std::size_t size = count * sizeof(Object);
    const auto got = utils::io::retryInterrupted(
        [&] { return ::pread(file.number(), objects, size, static_cast<::off_t>(offset)); });
    return got >= 0 && static_cast<std::size_t>(got) == size;
}

/// Where `size` bytes from `offset` on end; the largest number where that is no number.
std::uint64_t endOf(std::uint64_t offset, std::uint64_t size) {
    return size > std::numeric_limits<std::uint64_t>::max() - offset
               ? std::numeric_limits<std::uint64_t>::max()
               : offset + size;
}

/// How many bytes a module must have for all that is loaded of it, as its head says; nothing where
/// the head is none.
std::optional<std::uint64_t> sizeSaid(const Descriptor& file) {
    Header header{};
    if (!readObjects(file, 0, &header, 1) || std::memcmp(header.e_ident, ELFMAG, SELFMAG) != 0 ||
        header.e_ident[EI_CLASS] != (sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32) ||
        header.e_phentsize != sizeof(Segment))
        return std::nullopt;
    std::vector<Segment> segments(header.e_phnum);
    std::uint64_t size = endOf(header.e_phoff, segments.size() * sizeof(Segment));
    if (header.e_shoff != 0)
        size = std::max(size,
                        endOf(header.e_shoff, std::uint64_t{header.e_shnum} * header.e_shentsize));
    if (!readObjects(file, header.e_phoff, segments.data(), segments.size()))
        return size;
    for (const Segment& segment : segments)
        if (segment.p_type == PT_LOAD)
            size = std::max(size, endOf(segment.p_offset, segment.p_filesz));
    return size;
}

void requireWhole(const Descriptor& file, std::uint64_t size) {
    const auto said = sizeSaid(file);
    if (said && *said > size)
        refuse("it is not whole: {} of at least {} bytes are there",
               {std::to_string(size), std::to_string(*said)});
}

} // namespace

void requireLoadable(const std::filesystem::path& file) {
    const Descriptor descriptor = open(file, 0);
    const auto status = descriptor.status();
    if (!S_ISREG(status.st_mode))
        refuse("it is no regular file");
    if (!isOurs(status))
        refuse("others may write to it; only its owner, you or the system, should");
    requireOwnFolder(file.parent_path());
    requireWhole(descriptor, static_cast<std::uint64_t>(status.st_size));
}

void requireOwnFolder(const std::filesystem::path& folder) {
    auto status = open(folder, O_DIRECTORY).status();
    // In such a folder, as the system's temporary one is, nobody replaces what another has put
    // there.
    if ((status.st_mode & S_ISVTX) != 0)
        status.st_mode &= ~static_cast<::mode_t>(S_IWOTH | S_IWGRP);
    if (!isOurs(status))
        refuse("others may write to its folder, {}", {folder.native()});
}

} // namespace corvane::workbench::core
