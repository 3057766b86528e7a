#include "bench/FreshProcess.hpp"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>

namespace corvane::bench {

namespace {

std::string quoted(const std::filesystem::path& path) { return '"' + path.string() + '"'; }

std::string commandOf(const char* verb, const std::filesystem::path& file) {
    return quoted(std::filesystem::read_symlink("/proc/self/exe")) + " " + verb + " " +
           quoted(file);
}

/// What a dump of callgrind says it has counted.
double countIn(const std::filesystem::path& dump) {
    std::ifstream stream(dump);
    std::string word;
    double count = 0;
    while (stream >> word)
        if (word == "totals:" && stream >> count)
            return count;
    throw std::runtime_error("no count in " + dump.string());
}

} // namespace

std::string askFreshProcess(const char* verb, const std::filesystem::path& file) {
    const auto command = commandOf(verb, file);
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::array<char, 256> line{};
    if (pipe == nullptr || std::fgets(line.data(), line.size(), pipe.get()) == nullptr)
        throw std::runtime_error("no answer from " + command);
    return line.data();
}

std::vector<double> countInFreshProcess(const char* verb, const std::filesystem::path& file,
                                        std::size_t roads) {
    auto dumps = file;
    dumps += ".callgrind";
    const auto command =
        "valgrind --quiet --tool=callgrind --instr-atstart=no --callgrind-out-file=" +
        quoted(dumps) + " " + commandOf(verb, file);
    if (std::system(command.c_str()) != 0)
        throw std::runtime_error("failed: " + command);
    std::vector<double> counts;
    for (std::size_t road = 1; road <= roads; ++road)
        counts.push_back(countIn(dumps.string() + "." + std::to_string(road)));
    return counts;
}

} // namespace corvane::bench
