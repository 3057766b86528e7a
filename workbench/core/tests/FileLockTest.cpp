#include "CoreTesting.hpp"

#include "workbench/core/files/FileLock.hpp"

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <thread>

namespace corvane::workbench::core::test {

namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr milliseconds kImpatient(1);

class FileLockTest : public ProjectTest {
public:
    fs::path file = folder.write("p.json", R"({"corvane": 1, "elements": []})");
};

} // namespace

TEST_F(FileLockTest, OneAtATimeHasIt) {
    const auto lock = FileLock::acquire(file, kImpatient);
    EXPECT_TRUE(lock.holds());
    EXPECT_EQ(messageOf([&] { static_cast<void>(FileLock::acquire(file, kImpatient)); }),
              file.string() +
                  " is being changed by another program, which does not come to an end");
}

TEST_F(FileLockTest, WhoWaitsGetsItNext) {
    std::atomic<bool> given = false;
    std::optional<FileLock> first = FileLock::acquire(file);
    std::thread second([&] {
        const auto lock = FileLock::acquire(file);
        EXPECT_TRUE(lock.holds());
        EXPECT_TRUE(given);
    });
    std::this_thread::sleep_for(milliseconds(20));
    given = true;
    first.reset();
    second.join();
}

TEST_F(FileLockTest, NothingIsLeftOfAHolderThatWasKilled) {
    const pid_t child = ::fork();
    if (child == 0) {
        const auto lock = FileLock::acquire(file);
        ::raise(SIGKILL);
    }
    ::waitpid(child, nullptr, 0);
    EXPECT_TRUE(FileLock::acquire(file, kImpatient).holds());
    EXPECT_EQ(folder.files(), std::vector<std::string>{"p.json"});
}

// A copy of the process that lives on has a copy of what is open.
TEST_F(FileLockTest, ACopyOfTheProcessDoesNotKeepIt) {
    std::optional<FileLock> lock = FileLock::acquire(file);
    const pid_t child = ::fork();
    if (child == 0) {
        ::pause();
        ::_exit(0);
    }
    lock.reset();
    EXPECT_TRUE(FileLock::acquire(file, kImpatient).holds());
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
}

TEST_F(FileLockTest, WhereThereIsNoFileThereIsNothingToHold) {
    EXPECT_FALSE(FileLock::acquire(folder.path() / "none.json", kImpatient).holds());
    EXPECT_FALSE(FileLock::acquire(folder.path() / "none/p.json", kImpatient).holds());
    EXPECT_FALSE(FileLock::acquire(folder.path(), kImpatient).holds());
    const auto pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(FileLock::acquire(pipe, kImpatient).holds());
}

TEST_F(FileLockTest, OneFileOfTwoPathsHasOneLock) {
    fs::create_symlink("p.json", folder.path() / "link.json");
    const auto lock = FileLock::acquire(folder.path() / "link.json");
    EXPECT_NE(messageOf([&] { static_cast<void>(FileLock::acquire(file, kImpatient)); }), "");
}

// Who waited for the lock holds the one of the file that the first has written.
TEST_F(FileLockTest, ReachesFromReadingToSaving) {
    std::optional<Project> first(std::in_place, plugins, file, FileLock::acquire(file));
    std::thread second([&] {
        const auto lock = FileLock::acquire(file);
        EXPECT_NE(contentOf(file).find(R"("name": "a")"), std::string::npos);
    });
    std::this_thread::sleep_for(milliseconds(20));
    first->add(first->model().root(), *plugins.findClass("@Skill.Wiring.Rack"), "a");
    first->save();
    second.join();
    first->save(); // takes the lock of the new file
}

TEST_F(FileLockTest, GoesWithAProjectThatCouldNotBeRead) {
    folder.write("p.json", "no project");
    EXPECT_NE(messageOf([&] { const Project project(plugins, file, FileLock::acquire(file)); }),
              "");
    EXPECT_TRUE(FileLock::acquire(file, kImpatient).holds());
}

} // namespace corvane::workbench::core::test
