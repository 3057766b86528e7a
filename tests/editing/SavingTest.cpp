#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <thread>

namespace corvane::test {

namespace fs = std::filesystem;

namespace {

/// Why this process cannot create a file; the test that asks has made sure that it cannot.
std::string reasonAgainst(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_CREAT | O_EXCL | O_WRONLY, 0600);
    const int error = descriptor < 0 ? errno : 0;
    if (descriptor >= 0)
        ::close(descriptor);
    return std::generic_category().message(error);
}

} // namespace

// The administrator may write where permissions forbid it, though not among the processes.
TEST(Saving, ToAFolderThatTakesNoFile) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    fs::path folder = "/proc";
    if (::geteuid() != 0) {
        folder = place.folder() / "locked";
        fs::create_directory(folder);
        fs::permissions(folder, fs::perms::owner_read | fs::perms::owner_exec);
    }
    const auto project = (folder / "P.json").string();
    const auto reason = reasonAgainst(project);
    EXPECT_EQ(place.run({"import", "a.db", "--project", project}),
              failed("cannot write " + project + ": " + reason));
    EXPECT_FALSE(fs::exists(project));
    fs::permissions(place.folder(), fs::perms::owner_all);
}

TEST(Saving, ToAFolderThatDoesNotExist) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "none/P.json"}),
              failed("cannot write none/P.json: No such file or directory"));
    EXPECT_EQ(place.run({"import", "a.db", "--project", "a.db/P.json"}),
              failed("a.db/P.json: Not a directory"));
    EXPECT_EQ(place.files(), std::vector<std::string>{"a.db"});
}

TEST(Saving, KeepsLinksAndPermissions) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    constexpr auto kPermissions = fs::perms::owner_read | fs::perms::owner_write;
    fs::permissions(place.folder() / "P.json", kPermissions);
    fs::create_symlink("P.json", place.folder() / "link.json");

    place.write("a.db", dataBlock("Data", "x : Bool; y : Int;"));
    static_cast<void>(place.printed({"import", "a.db", "--project", "link.json"}));
    EXPECT_TRUE(fs::is_symlink(place.folder() / "link.json"));
    EXPECT_FALSE(fs::is_symlink(place.folder() / "P.json"));
    EXPECT_NE(place.read("P.json").find("\"y\""), std::string::npos);
    EXPECT_EQ(fs::status(place.folder() / "P.json").permissions(), kPermissions);
    EXPECT_EQ(place.files(), (std::vector<std::string>{"P.json", "a.db", "link.json"}));
}

TEST(Saving, FollowsALinkWhoseFileIsNotThereYet) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    fs::create_directory(place.folder() / "plant");
    fs::create_symlink("plant/P.json", place.folder() / "link.json");
    static_cast<void>(place.printed({"import", "a.db", "--project", "link.json"},
                                    guessedNumber("a.db", "Data", 1)));
    EXPECT_TRUE(fs::is_symlink(place.folder() / "link.json"));
    EXPECT_NE(place.read("plant/P.json").find("\"x\""), std::string::npos);
}

// The plug-in reads its file after the program has read the project: a file that is slow to come
// leaves time for somebody else to save.
TEST(Saving, RefusesToOverwriteWhatSomebodyElseSaved) {
    const Sandbox place;
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    static_cast<void>(
        place.printed({"import", "a.db", "--project", "P.json"}, guessedNumber("a.db", "Data", 1)));
    const auto slow = place.folder() / "slow.db";
    ASSERT_EQ(::mkfifo(slow.c_str(), 0600), 0);

    const auto theirs = place.read("P.json") + "\n";
    std::thread writer([&] {
        const int descriptor = ::open(slow.c_str(), O_WRONLY | O_CLOEXEC); // until it is read
        place.write("P.json", theirs);
        const auto source = dataBlock("Data", "x : Bool; y : Int;");
        EXPECT_EQ(::write(descriptor, source.data(), source.size()),
                  static_cast<ssize_t>(source.size()));
        ::close(descriptor);
    });
    const auto result = place.run({"import", "slow.db", "--project", "P.json"});
    writer.join();
    EXPECT_EQ(result, failed("P.json was changed by another program and is not overwritten"));
    EXPECT_EQ(place.read("P.json"), theirs);
}

} // namespace corvane::test
