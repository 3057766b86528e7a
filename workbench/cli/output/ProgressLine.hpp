#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace corvane::workbench::cli {

/// Shows on standard error that a long job is still at work: after the first second, a line that
/// is drawn anew a few times a second and erased in the end. Only a terminal sees it.
class ProgressLine {
public:
    /// `text` says what is being done; control characters in it are masked.
    explicit ProgressLine(std::string_view text);
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

private:
    void draw();

    std::string text_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool done_ = false;
    std::thread thread_;
};

} // namespace corvane::workbench::cli
