#pragma once

#include <corvane/utils/io/InputStream.hpp>

#include <cstddef>
#include <filesystem>
#include <memory>

namespace corvane::utils::io {

/// Reads a file through a buffer of 64 KiB.
class CORVANE_EXPORT FileInputStream final : public InputStream {
public:
    /// Opens the file. Throws std::system_error with the system's reason when it cannot be opened;
    /// a directory opens, and fails when it is read. The file's name stands in no error text.
    /// A named pipe that nobody writes to is waited for, some seconds only; then this throws "No
    /// such device or address".
    explicit FileInputStream(const std::filesystem::path& path);
    ~FileInputStream() override;

    /// Closes the file; what is buffered is dropped and the stream is at its end. Closing again
    /// does nothing.
    void close();

    /// Works on every file that can seek. One that cannot, such as a pipe, goes back as long as no
    /// more than the first buffer has been read; later this throws std::system_error.
    void rewind() override;

protected:
    bool refill() override;

private:
    void awaitWriter();
    bool hasWriter();
    std::size_t readInto(char* target, std::size_t size);

    std::unique_ptr<char[]> buffer_;
    int descriptor_;
    std::size_t filled_ = 0; // bytes in the buffer
    bool fromStart_ = true;  // the buffer still holds the file's first byte
};

} // namespace corvane::utils::io
