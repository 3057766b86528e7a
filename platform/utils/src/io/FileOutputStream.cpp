#include <corvane/utils/io/FileOutputStream.hpp>

#include <corvane/utils/io/SystemError.hpp>

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace corvane::utils::io {

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;
static_assert(kBufferSize >= OutputStream::kMaxReserve);

} // namespace

FileOutputStream FileOutputStream::create(const std::filesystem::path& path, unsigned mode) {
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC;
    const int descriptor = retryInterrupted([&] { return ::open(path.c_str(), kFlags, mode); });
    if (descriptor < 0)
        throwSystemError("cannot create the file");
    return FileOutputStream(descriptor, true, path.string());
}

FileOutputStream::FileOutputStream(int descriptor)
    : FileOutputStream(descriptor, false, "descriptor " + std::to_string(descriptor)) {}

FileOutputStream::FileOutputStream(int descriptor, bool owned, std::string description)
    : buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)),
      pending_(buffer_.get()),
      descriptor_(descriptor),
      owned_(owned),
      description_(std::move(description)) {
    cursor_ = pending_;
    end_ = pending_ + kBufferSize;
}

FileOutputStream::FileOutputStream(FileOutputStream&& other) noexcept
    : buffer_(std::move(other.buffer_)),
      pending_(std::exchange(other.pending_, nullptr)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      owned_(std::exchange(other.owned_, false)),
      description_(std::move(other.description_)) {
    cursor_ = std::exchange(other.cursor_, nullptr);
    end_ = std::exchange(other.end_, nullptr);
}

FileOutputStream::~FileOutputStream() {
    if (owned_)
        ::close(descriptor_);
}

void FileOutputStream::flush() {
    while (pending_ != cursor_)
        pending_ += writeSome(pending_, static_cast<std::size_t>(cursor_ - pending_));
    pending_ = cursor_ = buffer_.get();
}

void FileOutputStream::sync() {
    flush();
    if (retryInterrupted([&] { return ::fsync(descriptor_); }) == 0)
        return;
    const bool noDisk = errno == EINVAL || errno == ENOTSUP || errno == EROFS;
    if (!noDisk)
        throwSystemError("cannot write the file");
}

void FileOutputStream::close() {
    if (descriptor_ < 0)
        return;
    flush();
    end_ = cursor_;
    const int descriptor = std::exchange(descriptor_, -1);
    if (!std::exchange(owned_, false))
        return;
    // An interrupted close has released the descriptor all the same: no second attempt.
    if (::close(descriptor) != 0 && errno != EINTR)
        throwSystemError("cannot write the file");
}

void FileOutputStream::overflow() {
    if (descriptor_ < 0) {
        errno = EBADF;
        throwSystemError("cannot write the file");
    }
    flush();
}

void FileOutputStream::writeBlock(std::string_view bytes) {
    overflow();
    while (bytes.size() > room())
        bytes.remove_prefix(writeSome(bytes.data(), bytes.size()));
    write(bytes);
}

std::size_t FileOutputStream::writeSome(const char* bytes, std::size_t size) {
    const ssize_t count = retryInterrupted([&] { return ::write(descriptor_, bytes, size); });
    if (count < 0)
        throwSystemError("cannot write the file");
    return static_cast<std::size_t>(count);
}

} // namespace corvane::utils::io
