#include "workbench/cli/output/ProgressLine.hpp"

#include <corvane/utils/string/ControlCharacters.hpp>

#include <unistd.h>

#include <array>
#include <chrono>
#include <iostream>

namespace corvane::workbench::cli {

namespace {

constexpr std::chrono::seconds kQuietTime(1);
constexpr std::chrono::milliseconds kFrameTime(200);
constexpr std::array<std::string_view, 8> kFrames{"[>       ]", "[=>      ]", "[==>     ]",
                                                  "[ ==>    ]", "[  ==>   ]", "[   ==>  ]",
                                                  "[    ==> ]", "[     ==>]"};
constexpr std::string_view kEraseLine = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine(std::string_view text)
    : text_(utils::string::maskControlCharacters(text)) {
    if (::isatty(STDERR_FILENO) == 1)
        thread_ = std::thread([this] { draw(); });
}

ProgressLine::~ProgressLine() {
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    wake_.notify_one();
    thread_.join();
}

void ProgressLine::draw() {
    std::unique_lock lock(mutex_);
    if (wake_.wait_for(lock, kQuietTime, [this] { return done_; }))
        return;
    for (std::size_t frame = 0; !done_; ++frame) {
        std::cerr << kEraseLine << kFrames[frame % kFrames.size()] << ' ' << text_ << std::flush;
        wake_.wait_for(lock, kFrameTime, [this] { return done_; });
    }
    std::cerr << kEraseLine << std::flush;
}

} // namespace corvane::workbench::cli
