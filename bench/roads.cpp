#include "bench/Roads.hpp"

#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <span>
#include <string_view>
#include <vector>

namespace {

using namespace corvane::bench;

struct Group {
    std::string_view name;
    void (*measure)(const Setup&, std::vector<Result>&);
};

constexpr std::array kGroups{
    Group{"processes", measureProcesses},
    Group{"addresses", [](const Setup&, auto& results) { measureAddresses(results); }},
    Group{"documents", measureImportDocuments},
    Group{"projects", measureProjects},
    Group{"growth", measureGrowth},
};

/// What this program is asked for by itself.
struct Verb {
    std::string_view name;
    int (*run)(const char* file);
};

constexpr std::array kVerbs{
    Verb{kResidentVerb, printResidentBytes},
    Verb{kImportRoadsVerb, goImportRoads},
    Verb{kLoadRoadsVerb, goLoadRoads},
};

int usage() {
    std::fputs("usage: corvane-roads [GROUP...]\n\ngroups, all of them if none is named:\n",
               stderr);
    for (const auto& group : kGroups)
        std::fprintf(stderr, "    %s\n", group.name.data());
    return 2;
}

void run(std::span<char* const> wanted) {
    const Setup setup;
    std::vector<Result> results;
    for (const auto& group : kGroups)
        if (wanted.empty() || std::ranges::find(wanted, group.name) != wanted.end())
            group.measure(setup, results);
    const int exceeded = printReport(results);
    if (exceeded != 0)
        std::printf("\n%d of the bars are exceeded.\n", exceeded);
    else
        std::puts("\nAll bars hold.");
}

} // namespace

int main(int argc, char** argv) try {
    const std::span<char* const> arguments(argv + 1, argv + argc);
    for (const auto& [verb, run] : kVerbs)
        if (arguments.size() == 2 && arguments[0] == verb)
            return run(arguments[1]);
    for (const std::string_view name : arguments)
        if (std::ranges::find(kGroups, name, &Group::name) == kGroups.end())
            return usage();
    run(arguments);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
