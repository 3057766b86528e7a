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

/// Runs a program to its end, its output thrown away; returns the most bytes it had in memory.
std::size_t run(std::vector<std::string> arguments) {
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
    return static_cast<std::size_t>(usage.ru_maxrss) * 1024;
}

} // namespace

void measureProcesses(const Workshop& workshop, std::vector<Result>& results) {
    const double line = medianSeconds(41, [] { run({ONE_LINE_PROGRAM}); });
    const double start = medianSeconds(41, [] { run({CORVANE_PROGRAM, "plugins"}); });
    results.push_back({"start of corvane plugins",
                       "",
                       start,
                       "",
                       "a program that prints a line",
                       start / line,
                       4,
                       {}});

    const auto file = workshop.write("peak.db", arraySource(1'000'000));
    const auto document = Workshop::documentOf(*workshop.newTarget().element, file).size();
    trimMemory();
    const auto peak = run({CORVANE_PROGRAM, "import", file.string(), "--document"});
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
