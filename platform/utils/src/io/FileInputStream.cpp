#include <corvane/utils/io/FileInputStream.hpp>

#include <corvane/utils/io/SystemError.hpp>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <system_error>
#include <thread>

namespace corvane::utils::io {

namespace {

constexpr std::size_t kBufferSize = 64 * 1024;

using std::chrono::milliseconds;

/// How long a pipe may be without a writer, and how often that is asked.
constexpr milliseconds kPatience{5000};
constexpr milliseconds kInterval{20};

// Opens without waiting: the system itself would wait for a pipe's writer, for ever.
int openFile(const std::filesystem::path& path) {
    const int descriptor =
        retryInterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK); });
    if (descriptor < 0)
        throwSystemError("cannot open the file");
    return descriptor;
}

} // namespace

FileInputStream::FileInputStream(const std::filesystem::path& path)
    : buffer_(std::make_unique_for_overwrite<char[]>(kBufferSize)), descriptor_(openFile(path)) {
    try {
        awaitWriter();
    } catch (...) {
        close();
        throw;
    }
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

// A pipe without a writer is at its end, and one whose writer has written nothing yet would block:
// that is how the two are told apart. From then on reading waits, as it does for every other file.
void FileInputStream::awaitWriter() {
    struct ::stat status{};
    if (::fstat(descriptor_, &status) == 0 && S_ISFIFO(status.st_mode))
        for (milliseconds waited{}; !hasWriter(); waited += kInterval) {
            if (waited >= kPatience)
                throw std::system_error(std::make_error_code(std::errc::no_such_device_or_address),
                                        "nothing writes to the pipe");
            std::this_thread::sleep_for(kInterval);
        }
    const int flags = ::fcntl(descriptor_, F_GETFL);
    if (flags < 0 || ::fcntl(descriptor_, F_SETFL, flags & ~O_NONBLOCK) < 0)
        throwSystemError("cannot open the file");
}

bool FileInputStream::hasWriter() {
    // A writer that came and went is known by the system, and has written all that it wanted.
    struct ::pollfd pipe{.fd = descriptor_, .events = POLLIN, .revents = 0};
    if (::poll(&pipe, 1, 0) > 0)
        return true;
    const ssize_t count =
        retryInterrupted([&] { return ::read(descriptor_, buffer_.get(), kBufferSize); });
    if (count > 0) { // came just now
        filled_ = static_cast<std::size_t>(count);
        setFirstBuffer(buffer_.get(), buffer_.get() + filled_);
    }
    return count != 0;
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
