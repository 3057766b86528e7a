#include "workbench/core/plugins/SharedLibrary.hpp"

#include <dlfcn.h>

#include <stdexcept>
#include <string>
#include <utility>

namespace corvane::workbench::core {

namespace {

// As a rule the loader's text begins with the file, which whoever reports it names anyway.
std::string reasonOfLoader(const std::filesystem::path& file) {
    std::string reason = dlerror();
    const auto prefix = file.string() + ": ";
    if (reason.starts_with(prefix))
        reason.erase(0, prefix.size());
    return reason;
}

} // namespace

SharedLibrary::SharedLibrary(const std::filesystem::path& file)
    : handle_(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (handle_ == nullptr)
        throw std::runtime_error(reasonOfLoader(file));
}

SharedLibrary::SharedLibrary(SharedLibrary&& other) noexcept
    : handle_(std::exchange(other.handle_, nullptr)) {}

SharedLibrary::~SharedLibrary() {
    if (handle_ != nullptr)
        dlclose(handle_);
}

} // namespace corvane::workbench::core
