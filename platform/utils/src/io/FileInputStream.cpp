#include <corvane/utils/io/FileInputStream.hpp>

#include <corvane/utils/io/SystemError.hpp>

#include <fcntl.h>
#include <unistd.h>

namespace corvane::utils::io {

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

} // namespace

FileInputStream::FileInputStream(const std::filesystem::path& path)
    : buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)),
      descriptor_(retryInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC); })) {
    if (descriptor_ < 0)
        throwSystemError("cannot open the file");
}

FileInputStream::~FileInputStream() { close(); }

void FileInputStream::close() {
    // Nothing was written, so a failing close has nothing to tell.
    if (descriptor_ >= 0)
        ::close(descriptor_);
    descriptor_ = -1;
    fromStart_ = false;
    setBuffer(nullptr, nullptr);
}

void FileInputStream::rewind() {
    if (!fromStart_) {
        if (::lseek(descriptor_, 0, SEEK_SET) < 0)
            throwSystemError("cannot rewind the file");
        fromStart_ = true;
        filled_ = 0;
    }
    setFirstBuffer(buffer_.get(), buffer_.get() + filled_);
}

bool FileInputStream::refill() {
    if (descriptor_ < 0)
        return false;
    // The first bytes stay in the buffer while there is room behind them, so that a look at the
    // beginning of a pipe can be taken back.
    const std::size_t kept = fromStart_ && filled_ < kBufferSize ? filled_ : 0;
    char* const target = buffer_.get() + kept;
    const std::size_t size = readInto(target, kBufferSize - kept);
    if (size == 0)
        return false;
    fromStart_ = fromStart_ && kept == filled_;
    filled_ = kept + size;
    setBuffer(target, target + size);
    return true;
}

std::size_t FileInputStream::readInto(char* target, std::size_t size) {
    const ssize_t count = retryInterrupted([&] { return ::read(descriptor_, target, size); });
    if (count < 0)
        throwSystemError("cannot read the file");
    return static_cast<std::size_t>(count);
}

} // namespace corvane::utils::io
