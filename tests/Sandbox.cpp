#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pty.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <system_error>
#include <thread>

extern char** environ; // NOLINT(readability-redundant-declaration): not every libc declares it

namespace corvane::test {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds kTimeLimit(60);

/// A file without a name that takes what a program prints.
class Capture {
public:
    Capture() : descriptor_(::memfd_create("output", MFD_CLOEXEC)) {
        if (descriptor_ < 0)
            throw std::system_error(errno, std::generic_category(), "memfd");
    }
    Capture(const Capture&) = delete;
    Capture& operator=(const Capture&) = delete;
    ~Capture() { ::close(descriptor_); }

    [[nodiscard]] int descriptor() const { return descriptor_; }

    [[nodiscard]] std::string text() const {
        std::string text;
        std::array<char, 65536> block{};
        for (off_t from = 0;;) {
            const auto count = ::pread(descriptor_, block.data(), block.size(), from);
            if (count <= 0)
                return text;
            text.append(block.data(), static_cast<std::size_t>(count));
            from += count;
        }
    }

private:
    int descriptor_;
};

/// A terminal that shows nothing, and passes every byte on as it came.
class Terminal {
public:
    Terminal() {
        if (::openpty(&master_, &slave_, nullptr, nullptr, nullptr) != 0)
            throw std::system_error(errno, std::generic_category(), "openpty");
        termios settings{};
        ::tcgetattr(slave_, &settings);
        ::cfmakeraw(&settings);
        ::tcsetattr(slave_, TCSANOW, &settings);
        ::fcntl(master_, F_SETFL, O_NONBLOCK); // there may be nothing to read
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() {
        ::close(slave_);
        ::close(master_);
    }

    [[nodiscard]] int descriptor() const { return slave_; }

    /// What was written since the last call.
    [[nodiscard]] std::string text() const {
        std::string text;
        std::array<char, 4096> block{};
        for (;;) {
            const auto count = ::read(master_, block.data(), block.size());
            if (count <= 0)
                return text;
            text.append(block.data(), static_cast<std::size_t>(count));
        }
    }

private:
    int master_ = -1;
    int slave_ = -1;
};

// What the tester's own shell has set for the program must not reach it.
std::vector<std::string> environmentWith(const std::vector<std::string>& more) {
    std::vector<std::string> variables;
    for (char** variable = environ; *variable != nullptr; ++variable) // NOLINT: a C list
        if (!std::string_view(*variable).starts_with("CORVANE_"))
            variables.emplace_back(*variable);
    variables.insert(variables.end(), more.begin(), more.end());
    return variables;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (auto& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

int waitFor(pid_t process) {
    const auto end = std::chrono::steady_clock::now() + kTimeLimit;
    int status = 0;
    while (::waitpid(process, &status, WNOHANG) == 0) {
        if (std::chrono::steady_clock::now() > end) {
            ADD_FAILURE() << "the program took too long";
            ::kill(process, SIGKILL);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (WIFEXITED(status))
        return WEXITSTATUS(status);
    ADD_FAILURE() << "the program was ended by signal " << WTERMSIG(status);
    return -1;
}

} // namespace

/// Where the program's standard streams go, and where it runs.
class FileActions {
public:
    FileActions() { posix_spawn_file_actions_init(&actions_); }
    FileActions(const FileActions&) = delete;
    FileActions& operator=(const FileActions&) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&actions_); }

    void in(const fs::path& folder) {
        posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str());
    }
    void open(int descriptor, const std::string& file, int flags) {
        posix_spawn_file_actions_addopen(&actions_, descriptor, file.c_str(), flags, 0);
    }
    void redirect(int descriptor, int target) {
        posix_spawn_file_actions_adddup2(&actions_, target, descriptor);
    }
    [[nodiscard]] const posix_spawn_file_actions_t* get() const { return &actions_; }

private:
    posix_spawn_file_actions_t actions_{};
};

std::ostream& operator<<(std::ostream& stream, const Result& result) {
    return stream << "exit code " << result.exitCode << "\n--- standard output:\n"
                  << result.out << "--- standard error:\n"
                  << result.err << "---";
}

Result done(std::string_view out, std::string_view err) {
    return {.exitCode = 0, .out = std::string(out), .err = std::string(err)};
}

Result failed(std::string_view message) {
    return {.exitCode = 1, .out = {}, .err = "corvane: " + std::string(message) + "\n"};
}

Result misused(std::string_view message, std::string_view verb) {
    const auto command = verb.empty() ? "corvane" : "corvane " + std::string(verb);
    return {.exitCode = 2,
            .out = {},
            .err = "corvane: " + std::string(message) + "\nRun \"" + command +
                   " --help\" for more information.\n"};
}

int Sandbox::spawn(const std::vector<std::string>& arguments,
                   const std::vector<std::string>& variables, FileActions& actions) const {
    std::vector<std::string> words{CORVANE_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    auto environment = environmentWith(variables);
    actions.in(folder());
    actions.open(STDIN_FILENO, "/dev/null", O_RDONLY);

    pid_t process = 0;
    const int error = posix_spawn(&process, CORVANE_PROGRAM, actions.get(), nullptr,
                                  pointersTo(words).data(), pointersTo(environment).data());
    if (error != 0)
        throw std::system_error(error, std::generic_category(), CORVANE_PROGRAM);
    return waitFor(process);
}

Result Sandbox::run(const std::vector<std::string>& arguments,
                    const Surroundings& surroundings) const {
    const Capture out;
    const Capture err;
    FileActions actions;
    if (surroundings.output.empty())
        actions.redirect(STDOUT_FILENO, out.descriptor());
    else
        actions.open(STDOUT_FILENO, surroundings.output, O_WRONLY);
    actions.redirect(STDERR_FILENO, err.descriptor());
    const int exitCode = spawn(arguments, surroundings.variables, actions);
    return {.exitCode = exitCode, .out = out.text(), .err = err.text()};
}

Result Sandbox::runOnTerminal(const std::vector<std::string>& arguments,
                              const Surroundings& surroundings) const {
    const Terminal out;
    const Terminal err;
    FileActions actions;
    actions.redirect(STDOUT_FILENO, out.descriptor());
    actions.redirect(STDERR_FILENO, err.descriptor());
    const int exitCode = spawn(arguments, surroundings.variables, actions);
    return {.exitCode = exitCode, .out = out.text(), .err = err.text()};
}

std::string Sandbox::printed(const std::vector<std::string>& arguments,
                             std::string_view err) const {
    auto result = run(arguments);
    EXPECT_EQ(result.exitCode, 0) << result;
    EXPECT_EQ(result.err, err);
    return std::move(result.out);
}

fs::path examples() { return CORVANE_EXAMPLES; }

fs::path expectedListings() { return CORVANE_EXPECTED; }

fs::path sources() { return CORVANE_SOURCES; }

fs::path testPlugins() { return CORVANE_TEST_PLUGINS; }

fs::path ownPlugin() { return CORVANE_OWN_PLUGIN; }

} // namespace corvane::test
