#include "bench/FreshProcess.hpp"

#include <array>
#include <cstdio>
#include <memory>
#include <stdexcept>

namespace corvane::bench {

std::string askFreshProcess(const char* verb, const std::filesystem::path& file) {
    const auto program = std::filesystem::read_symlink("/proc/self/exe");
    const auto command = "\"" + program.string() + "\" " + verb + " \"" + file.string() + "\"";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(::popen(command.c_str(), "r"), ::pclose);
    std::array<char, 256> line{};
    if (pipe == nullptr || std::fgets(line.data(), line.size(), pipe.get()) == nullptr)
        throw std::runtime_error("no answer from " + command);
    return line.data();
}

} // namespace corvane::bench
