#pragma once

#include <corvane/utils/io/OutputStream.hpp>

#include <filesystem>
#include <memory>
#include <string>

namespace corvane::utils::io {

/// Writes to a file, or to a descriptor that somebody else owns, through a buffer of 64 KiB.
///
/// Every failure (no space, broken pipe) is thrown as std::system_error. The destructor writes
/// nothing: who wants the bytes calls `flush` or `close` and learns whether they arrived. After a
/// failure, what was buffered and not yet written stays so: the next `flush` goes on with it.
class CORVANE_EXPORT FileOutputStream final : public OutputStream {
public:
    /// Creates the file, which must not exist yet, with the permissions `mode` less the umask. The
    /// path is the stream's description, and stands in no error text.
    static FileOutputStream create(const std::filesystem::path& path, unsigned mode = 0666);

    /// Writes to an open descriptor, which stays open.
    explicit FileOutputStream(int descriptor);
    FileOutputStream(FileOutputStream&& other) noexcept;
    ~FileOutputStream() override;

    void flush() override;

    /// Flushes, and waits until the bytes are on the disk. What has no disk behind it (a pipe, a
    /// terminal) is only flushed.
    void sync();

    /// Flushes and closes (a descriptor that somebody else owns is let go, not closed); closing
    /// again does nothing. Writing afterwards fails.
    void close();

    [[nodiscard]] std::string_view description() const override { return description_; }

protected:
    void overflow() override;
    void writeBlock(std::string_view bytes) override;

private:
    FileOutputStream(int descriptor, bool owned, std::string description);
    [[nodiscard]] std::size_t writeSome(const char* bytes, std::size_t size);

    std::unique_ptr<char[]> buffer_;
    char* pending_ = nullptr; // the first byte in the buffer that is not written yet
    int descriptor_;
    bool owned_;
    std::string description_;
};

} // namespace corvane::utils::io
