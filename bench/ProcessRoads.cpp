#include "bench/Generators.hpp"
#include "bench/Roads.hpp"
#include "bench/Timing.hpp"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <stdexcept>

extern char** environ;

namespace corvane::bench {

namespace {

constexpr int kStarts = 101;

struct Usage {
    double seconds;        // of processor time
    std::size_t peakBytes; // the most that were in memory
};

double secondsIn(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

/// Runs a program to its end, its output thrown away.
Usage run(std::vector<std::string> arguments) {
    std::vector<char*> argv;
    for (auto& argument : arguments)
        argv.push_back(argument.data());
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
    pid_t child = 0;
    const int error = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    struct rusage usage{};
    if (error != 0 || wait4(child, &status, 0, &usage) != child || status != 0)
        throw std::runtime_error(arguments.front() + " failed");
    return {secondsIn(usage.ru_utime) + secondsIn(usage.ru_stime),
            static_cast<std::size_t>(usage.ru_maxrss) * 1024};
}

} // namespace

void measureProcesses(const Setup& setup, std::vector<Result>& results) {
    Seconds starts;
    Seconds lines;
    for (int pair = 0; pair != kStarts; ++pair) {
        starts.push_back(run({CORVANE_PROGRAM, "plugins"}).seconds);
        lines.push_back(run({ONE_LINE_PROGRAM}).seconds);
    }
    results.push_back({"start of corvane plugins",
                       "",
                       median(starts),
                       "",
                       "a program that prints a line",
                       medianRatio(starts, lines),
                       4,
                       {}});

    const auto file = setup.write("peak.db", arraySource(1'000'000));
    const auto document = Setup::documentOf(*setup.newTarget().element, file).size();
    trimMemory();
    const auto peak = run({CORVANE_PROGRAM, "import", file.string(), "--document"}).peakBytes;
    results.push_back({"peak memory of import --document",
                       megabytes(document),
                       0,
                       megabytes(peak),
                       "the document's size",
                       static_cast<double>(peak) / static_cast<double>(document),
                       2.2,
                       {}});
}

} // namespace corvane::bench
