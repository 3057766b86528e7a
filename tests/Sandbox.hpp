#pragma once

#include "TemporaryFolder.hpp"

#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// What every system test works with: a folder of its own, and the finished program that runs in
/// it, so that the texts name files as a user does.
namespace corvane::test {

using utils::test::contentOf;

/// All that a run of the program leaves behind.
struct Result {
    int exitCode = 0;
    std::string out;
    std::string err;

    friend bool operator==(const Result&, const Result&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Result& result);
};

/// A run that did its job: `out` on standard output, and nothing on standard error but `err`.
[[nodiscard]] Result done(std::string_view out = {}, std::string_view err = {});

/// A run that failed without a word on standard output. `message` is a line on standard error,
/// behind the program's name.
[[nodiscard]] Result failed(std::string_view message);

/// A run that was refused because its command line is wrong; `verb` is "" for the program itself.
[[nodiscard]] Result misused(std::string_view message, std::string_view verb = {});

class FileActions;

/// A folder that goes with its test, and the program.
class Sandbox {
public:
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }

    void write(std::string_view file, std::string_view content) const {
        folder_.write(file, content);
    }
    [[nodiscard]] std::string read(std::string_view file) const {
        return contentOf(folder() / file);
    }
    [[nodiscard]] bool has(std::string_view file) const {
        return std::filesystem::exists(folder() / file);
    }

    /// The names in the folder, sorted.
    [[nodiscard]] std::vector<std::string> files() const { return folder_.files(); }

    struct Surroundings {
        std::vector<std::string> variables; // "NAME=VALUE", beside those of the test itself
        std::string output;                 // a file that standard output goes to
    };

    /// Runs the program in the folder. Fails the test, and kills the program, after a minute.
    [[nodiscard]] Result run(const std::vector<std::string>& arguments,
                             const Surroundings& surroundings = {}) const;

    /// Runs the program with a terminal for each of its two outputs. `Surroundings::output` is not
    /// looked at. The terminals keep some kilobytes, which is what may be printed at most.
    [[nodiscard]] Result runOnTerminal(const std::vector<std::string>& arguments,
                                       const Surroundings& surroundings = {}) const;

    /// Runs and expects success, with nothing on standard error but `err`; returns what was
    /// printed.
    [[nodiscard]] std::string printed(const std::vector<std::string>& arguments,
                                      std::string_view err = {}) const;

private:
    int spawn(const std::vector<std::string>& arguments, const std::vector<std::string>& variables,
              FileActions& actions) const;

    utils::test::TemporaryFolder folder_;
};

/// The folder of the example files.
[[nodiscard]] std::filesystem::path examples();

/// The folder of the listings that the examples' imports are compared with.
[[nodiscard]] std::filesystem::path expectedListings();

/// The folder of the sources that the plug-in's own tests import.
[[nodiscard]] std::filesystem::path sources();

/// The folder of the plug-ins that are made for the tests, good ones and broken ones.
[[nodiscard]] std::filesystem::path testPlugins();

/// The plug-in that comes with the program.
[[nodiscard]] std::filesystem::path ownPlugin();

} // namespace corvane::test
