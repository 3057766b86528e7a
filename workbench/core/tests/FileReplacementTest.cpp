#include "CoreTesting.hpp"

#include "workbench/core/files/FileReplacement.hpp"
#include "workbench/core/files/TextFile.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <optional>

namespace corvane::workbench::core::test {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kUuid = "01234567-89ab-4cde-8f01-23456789abcd";

struct ::stat statusOf(const fs::path& file) {
    struct ::stat status{};
    EXPECT_EQ(::stat(file.c_str(), &status), 0) << file;
    return status;
}

class FileReplacementTest : public testing::Test {
protected:
    /// Replaces a file; `meanwhile` is called when the new content is half written.
    FileIdentity replace(
        const fs::path& file, const std::optional<FileIdentity>& expected = std::nullopt,
        const std::function<void()>& meanwhile = [] {}) {
        return replaceFile(file, expected, [&](utils::io::OutputStream& stream) {
            stream.write("new ");
            meanwhile();
            stream.write("content");
        });
    }

    /// The one file of the folder that is not called `name`.
    [[nodiscard]] fs::path otherThan(std::string_view name) const {
        for (const auto& other : folder.files())
            if (other != name)
                return folder.path() / other;
        return {};
    }

    /// Does `action` in a copy of the process with the rights of an ordinary user, who is in the
    /// group of the file's; returns the text of what it throws.
    std::string asOrdinaryUser(const std::function<void()>& action) {
        int pipe[2];
        EXPECT_EQ(::pipe(pipe), 0);
        const pid_t child = ::fork();
        if (child == 0) {
            if (::setgroups(0, nullptr) != 0 || ::setgid(kGroup) != 0 || ::setuid(kUser) != 0)
                ::_exit(1);
            const auto message = messageOf(action);
            ::_exit(::write(pipe[1], message.data(), message.size()) < 0 ? 1 : 0);
        }
        ::close(pipe[1]);
        std::string text(1000, '\0');
        const auto size = ::read(pipe[0], text.data(), text.size());
        ::close(pipe[0]);
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
        text.resize(size < 0 ? 0 : static_cast<std::size_t>(size));
        return text;
    }

    static constexpr uid_t kOwner = 1234;
    static constexpr uid_t kUser = 65534;
    static constexpr gid_t kGroup = 4321;

public:
    TemporaryFolder folder;
};

} // namespace

TEST_F(FileReplacementTest, NobodyElseReadsAPrivateFileWhileItIsWritten) {
    const auto file = folder.write("f", "old");
    for (const mode_t mode : {0600U, 0640U, 0666U}) {
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        replace(file, std::nullopt,
                [&] { EXPECT_EQ(statusOf(otherThan("f")).st_mode & 07777, 0600U); });
        EXPECT_EQ(statusOf(file).st_mode & 07777, mode);
    }
}

TEST_F(FileReplacementTest, ANewFileHasThePermissionsThatTheUserGivesNewFiles) {
    const auto before = ::umask(0027);
    replace(folder.path() / "f");
    ::umask(before);
    EXPECT_EQ(statusOf(folder.path() / "f").st_mode & 07777, 0640U);
}

TEST_F(FileReplacementTest, KeepsExtendedAttributes) {
    const auto file = folder.write("f", "old");
    if (::setxattr(file.c_str(), "user.note", "mine", 4, 0) != 0)
        GTEST_SKIP() << "the folder of temporary files keeps no extended attributes";
    replace(file);
    std::string value(4, '\0');
    EXPECT_EQ(::getxattr(file.c_str(), "user.note", value.data(), value.size()), 4);
    EXPECT_EQ(value, "mine");
}

TEST_F(FileReplacementTest, KeepsTheOwnerWhereTheUserMay) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the administrator may give a file to somebody else";
    const auto file = folder.write("f", "old");
    ASSERT_EQ(::chown(file.c_str(), kOwner, kGroup), 0);
    replace(file);
    EXPECT_EQ(statusOf(file).st_uid, kOwner);
    EXPECT_EQ(statusOf(file).st_gid, kGroup);
}

TEST_F(FileReplacementTest, TakesNoFileFromItsOwnerOrGroup) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only the administrator may give a file to somebody else";
    const auto file = folder.write("f", "old");
    fs::permissions(folder.path(), fs::perms::all);
    struct Row {
        gid_t group;
        mode_t mode;
        std::string refusal;
    };
    const std::vector<Row> rows{
        {kGroup, 0620, ": it would no longer belong to its owner"},
        {kOwner, 0666, ": it would no longer belong to its group"},
        {kGroup, 0660, ""}, // shared by the group
    };
    for (const auto& [group, mode, refusal] : rows) {
        ASSERT_EQ(::chown(file.c_str(), kOwner, group), 0);
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        EXPECT_EQ(asOrdinaryUser([&] { replace(file); }),
                  refusal.empty() ? "" : "cannot write " + file.string() + refusal);
        EXPECT_EQ(contentOf(file), refusal.empty() ? "new content" : "old");
        EXPECT_EQ(statusOf(file).st_gid, group);
        EXPECT_EQ(statusOf(file).st_mode & 07777, mode);
        EXPECT_EQ(folder.files(), std::vector<std::string>{"f"});
    }
}

TEST_F(FileReplacementTest, PartsNoHardLinks) {
    const auto file = folder.write("f", "old");
    fs::create_hard_link(file, folder.path() / "g");
    EXPECT_EQ(messageOf([&] { replace(file); }),
              "cannot write " + file.string() +
                  ": it has 2 names (hard links), and the others would keep the old content");
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(folder.files(), (std::vector<std::string>{"f", "g"}));
}

TEST_F(FileReplacementTest, ReplacesRegularFilesOnly) {
    const auto pipe = folder.path() / "pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(messageOf([&] { replace(pipe); }),
              "cannot write " + pipe.string() + ": it is no regular file");
    EXPECT_EQ(messageOf([&] { replace(folder.path()); }),
              "cannot write " + folder.path().string() + ": Is a directory");
    EXPECT_TRUE(fs::is_fifo(pipe));
    EXPECT_EQ(folder.files(), std::vector<std::string>{"pipe"});
}

TEST_F(FileReplacementTest, RemovesWhatKilledProcessesLeft) {
    const auto file = folder.write("f", "old");
    const auto temporary = [](std::string_view name) {
        return std::string(name) + "." + std::string(kUuid) + ".tmp";
    };
    folder.write(temporary("f"), "half");
    const std::vector<std::string> others{temporary("ff"), temporary("F"), "f.tmp",
                                          "f.not-an-uuid-but-of-the-same-length-..tmp"};
    for (const auto& other : others)
        folder.write(other, "somebody's");
    fs::create_directory(folder.path() / "f.00000000-89ab-4cde-8f01-23456789abcd.tmp");
    replace(file);
    EXPECT_FALSE(fs::exists(folder.path() / temporary("f")));
    for (const auto& other : others)
        EXPECT_TRUE(fs::exists(folder.path() / other)) << other;
}

TEST_F(FileReplacementTest, LeavesWhatAnotherProcessIsWriting) {
    const auto file = folder.write("f", "old");
    replace(file, std::nullopt, [&] {
        const auto first = otherThan("f");
        replace(file); // another one, to whom the first is no leftover
        EXPECT_TRUE(fs::exists(first));
    });
    EXPECT_EQ(contentOf(file), "new content");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"f"});
}

TEST_F(FileReplacementTest, ASaveThatIsKilledLeavesTheOldFileAndTheNextOneCleansUp) {
    const auto file = folder.write("f", "old");
    const pid_t child = ::fork();
    if (child == 0)
        replace(file, std::nullopt, [] { ::raise(SIGKILL); });
    int status = 0;
    ::waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(contentOf(file), "old");
    EXPECT_EQ(folder.files().size(), 2U);
    replace(file);
    EXPECT_EQ(contentOf(file), "new content");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"f"});
}

// The longest name that a folder takes leaves no room for a longer one beside it.
TEST_F(FileReplacementTest, NamesMayBeAsLongAsTheyCanBe) {
    const std::vector<std::string> names{std::string(225, 'n'), std::string(255, 'n'),
                                         std::string(213, 'n') + "ää" + std::string(30, 'n')};
    for (const auto& name : names) {
        const auto file = folder.write(name, "old");
        replace(file, std::nullopt, [&] {
            EXPECT_LE(otherThan(name).filename().native().size(), 255U);
            EXPECT_TRUE(utils::string::detail::isValidUtf8(otherThan(name).native()));
        });
        EXPECT_EQ(contentOf(file), "new content");
        fs::remove(file);
    }
    EXPECT_TRUE(folder.files().empty());
}

TEST_F(FileReplacementTest, LooksAgainWhetherTheFileIsTheKnownOne) {
    const auto file = folder.write("f", "old");
    const auto known = identityOf(file);
    const auto refusal = file.string() + " was changed by another program and is not overwritten";
    EXPECT_EQ(
        messageOf([&] { replace(file, known, [&] { folder.write("f", "theirs, meanwhile"); }); }),
        refusal);
    EXPECT_EQ(contentOf(file), "theirs, meanwhile");
    EXPECT_EQ(messageOf([&] { replace(file, known); }), refusal);
    EXPECT_EQ(messageOf([&] { replace(file, FileIdentity()); }), refusal);
    EXPECT_EQ(folder.files(), std::vector<std::string>{"f"});

    const auto written = replace(file, identityOf(file));
    EXPECT_EQ(written, identityOf(file));
}

TEST_F(FileReplacementTest, CreatesNoFileOverOneThatCameMeanwhile) {
    const auto file = folder.path() / "f";
    EXPECT_NE(
        messageOf([&] { replace(file, FileIdentity(), [&] { folder.write("f", "theirs"); }); }),
        "");
    EXPECT_EQ(contentOf(file), "theirs");
    EXPECT_EQ(folder.files(), std::vector<std::string>{"f"});
}

// Who may write in the folder could make a link of the path after we have looked.
TEST_F(FileReplacementTest, StaysInTheFolderThatItOpened) {
    fs::create_directory(folder.path() / "a");
    fs::create_directory(folder.path() / "b");
    const auto file = folder.write("a/f", "old");
    const auto theirs = folder.write("b/f", "theirs");
    replace(file, std::nullopt, [&] {
        fs::rename(folder.path() / "a", folder.path() / "moved");
        fs::create_directory_symlink("b", folder.path() / "a");
    });
    EXPECT_EQ(contentOf(theirs), "theirs");
    EXPECT_EQ(contentOf(folder.path() / "moved/f"), "new content");
}

} // namespace corvane::workbench::core::test
