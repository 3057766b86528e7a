#pragma once

#include <filesystem>

namespace corvane::workbench::core {

/// A loaded module; closed by the destructor, which runs the module's static destructors.
class SharedLibrary {
public:
    /// Opens the module with all its symbols bound and none of them visible to others. Throws
    /// std::runtime_error with the loader's reason.
    explicit SharedLibrary(const std::filesystem::path& file);
    /// Takes the module over; `other` closes nothing any more.
    SharedLibrary(SharedLibrary&& other) noexcept;
    SharedLibrary& operator=(SharedLibrary&&) = delete;
    ~SharedLibrary();

private:
    void* handle_;
};

} // namespace corvane::workbench::core
