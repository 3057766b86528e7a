#pragma once

#include <cerrno>
#include <system_error>

/// What every caller of the operating system needs: its errors as exceptions, and calls that a
/// signal does not end.
namespace corvane::utils::io {

/// Throws what `errno` says. `action` ("cannot open the file") begins the text.
[[noreturn]] inline void throwSystemError(const char* action) {
    throw std::system_error(errno, std::generic_category(), action);
}

/// Repeats a system call for as long as a signal interrupts it, and returns its result: negative
/// where it failed, with the reason in `errno`. Not for `close`, which has let the descriptor go
/// even then.
template <typename Call>
auto retryInterrupted(Call call) {
    for (;;) {
        const auto result = call();
        if (result >= 0 || errno != EINTR)
            return result;
    }
}

} // namespace corvane::utils::io
