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
    void (*measure)(const Workshop&, std::vector<Result>&);
};

constexpr std::array kGroups{
    Group{"processes", measureProcesses},
    Group{"addresses", [](const Workshop&, auto& results) { measureAddresses(results); }},
    Group{"documents", measureImportDocuments},
    Group{"projects", measureProjects},
    Group{"growth", measureGrowth},
};

/// What this program is asked for by itself.
struct Verb {
    std::string_view name;
    int (*print)(const char* file);
};

constexpr std::array kVerbs{
    Verb{kResidentVerb, printResidentBytes},
    Verb{kImportTimesVerb, printImportTimes},
    Verb{kLoadTimeVerb, printLoadTime},
};

int usage() {
    std::fputs("usage: corvane-roads [GROUP...]\n\ngroups, all of them if none is named:\n",
               stderr);
    for (const auto& group : kGroups)
        std::fprintf(stderr, "    %s\n", group.name.data());
    return 2;
}

void run(std::span<char* const> wanted) {
    const Workshop workshop;
    std::vector<Result> results;
    for (const auto& group : kGroups)
        if (wanted.empty() || std::ranges::find(wanted, group.name) != wanted.end())
            group.measure(workshop, results);
    const int exceeded = printReport(results);
    if (exceeded != 0)
        std::printf("\n%d of the bars are exceeded.\n", exceeded);
}

} // namespace

int main(int argc, char** argv) try {
    const std::span<char* const> arguments(argv + 1, argv + argc);
    for (const auto& [verb, print] : kVerbs)
        if (arguments.size() == 2 && arguments[0] == verb)
            return print(arguments[1]);
    for (const std::string_view name : arguments)
        if (std::ranges::find(kGroups, name, &Group::name) == kGroups.end())
            return usage();
    run(arguments);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
