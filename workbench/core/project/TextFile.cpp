#include "workbench/core/project/TextFile.hpp"

#include <corvane/utils/core/Uuid.hpp>
#include <corvane/utils/io/FileInputStream.hpp>
#include <corvane/utils/io/FileOutputStream.hpp>
#include <corvane/utils/memory/LargePages.hpp>
#include <corvane/workbench/i18n/Translate.hpp>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace corvane::workbench::core {

namespace {

namespace fs = std::filesystem;

/// Removes a file that did not become what it was made for.
class Leftover {
public:
    explicit Leftover(fs::path file) : file_(std::move(file)) {}
    Leftover(const Leftover&) = delete;
    Leftover& operator=(const Leftover&) = delete;
    ~Leftover() {
        std::error_code ignored;
        if (!file_.empty())
            fs::remove(file_, ignored);
    }
    void keep() { file_.clear(); }

private:
    fs::path file_;
};

// A rename is on the disk only when its folder is. Some file systems cannot do this; the rename
// itself is done by then, so that is no failure.
void syncFolder(const fs::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    static_cast<void>(::fsync(descriptor));
    static_cast<void>(::close(descriptor));
}

std::system_error writeError(const std::error_code& code, const fs::path& file) {
    return {code, i18n::translateToUtf8("corvane::workbench::core::Project", "cannot write {}",
                                        {file.native()})};
}

// What a symbolic link leads to, whether or not there is anything yet.
fs::path targetOf(const fs::path& file) {
    constexpr int kMostLinks = 40; // as many as the system follows
    auto target = file;
    for (int links = 0; fs::is_symlink(target); ++links) {
        if (links == kMostLinks)
            throw writeError(std::make_error_code(std::errc::too_many_symbolic_link_levels), file);
        target = target.parent_path() / fs::read_symlink(target);
    }
    return fs::absolute(target);
}

// A rename would replace a file that its owner has protected from being written.
void expectWritable(const fs::path& file) {
    if (::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) != 0 && errno != ENOENT)
        throw std::system_error(errno, std::generic_category());
}

void copyPermissions(const fs::path& from, const fs::path& to) {
    std::error_code none;
    const auto status = fs::status(from, none);
    if (fs::exists(status))
        fs::permissions(to, status.permissions());
}

} // namespace

std::string readTextFile(const fs::path& file) try {
    utils::io::FileInputStream stream(file);
    std::string text;
    text.reserve(identityOf(file).size);
    utils::memory::preferLargePages(text.data(), text.capacity());
    while (stream.ensureBuffer()) {
        text.append(stream.cursor(), stream.bufferEnd());
        stream.advanceTo(stream.bufferEnd());
    }
    return text;
} catch (const std::system_error& error) {
    throw std::system_error(error.code(), file.string());
}

FileIdentity replaceFile(const fs::path& file, function_ref<void(utils::io::OutputStream&)> write) {
    const auto target = targetOf(file);
    auto temporary = target;
    temporary += "." + utils::core::Uuid::createVersion4().toString() + ".tmp";
    try {
        expectWritable(target);
        auto stream = utils::io::FileOutputStream::create(temporary);
        Leftover leftover(temporary);
        write(stream);
        stream.sync();
        stream.close();
        copyPermissions(target, temporary);
        fs::rename(temporary, target);
        leftover.keep();
    } catch (const std::system_error& error) {
        throw writeError(error.code(), file);
    }
    syncFolder(target.parent_path());
    return identityOf(target);
}

} // namespace corvane::workbench::core
