#pragma once

#include <corvane/utils/io/FileInputStream.hpp>

#include <filesystem>

namespace corvane::workbench::plugins::s7Driver::wrapper {

/// Keeps the file of an import open for as long as it is read.
class StreamWrapper {
public:
    /// Throws std::system_error when the file cannot be opened.
    explicit StreamWrapper(const std::filesystem::path& path) : stream_(path) {}
    StreamWrapper(const StreamWrapper&) = delete;
    StreamWrapper& operator=(const StreamWrapper&) = delete;
    ~StreamWrapper() { stream_.close(); }

    /// The file's bytes; as long-lived as this object.
    [[nodiscard]] utils::io::InputStream& stream() { return stream_; }

private:
    utils::io::FileInputStream stream_;
};

} // namespace corvane::workbench::plugins::s7Driver::wrapper
