#include "bench/Roads.hpp"

#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

int main(int argc, char** argv) try {
    using namespace corvane::bench;
    if (argc == 3 && std::string_view(argv[1]) == kResidentVerb)
        return printResidentBytes(argv[2]);
    const Workshop workshop;
    std::vector<Result> results;
    measureProcesses(workshop, results);
    measureAddresses(results);
    measureImportDocuments(workshop, results);
    measureProjects(workshop, results);
    measureGrowth(workshop, results);
    const int exceeded = printReport(results);
    if (exceeded != 0)
        std::printf("\n%d of the bars are exceeded.\n", exceeded);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
