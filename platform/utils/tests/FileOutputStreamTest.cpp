#include <corvane/utils/io/FileOutputStream.hpp>

#include "MessageOf.hpp"
#include "TemporaryFolder.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <system_error>

namespace corvane::utils::io {
namespace {

using test::contentOf;
using test::messageOf;

constexpr std::size_t kBufferSize = 64 * 1024;

class FileOutputStreamTest : public testing::Test {
protected:
    test::TemporaryFolder folder_;
    std::filesystem::path path_ = folder_.path() / "file";
};

TEST_F(FileOutputStreamTest, WritesWhatItIsGiven) {
    auto stream = FileOutputStream::create(path_);
    EXPECT_EQ(stream.description(), path_.string());
    stream.write("ab");
    stream.write({});
    stream.put('c');
    char* room = stream.reserve(10);
    *room++ = 'd';
    stream.commit(room);
    EXPECT_EQ(contentOf(path_), "");
    stream.flush();
    EXPECT_EQ(contentOf(path_), "abcd");
    stream.write("e");
    stream.sync();
    EXPECT_EQ(contentOf(path_), "abcde");
    stream.write("f");
    stream.close();
    EXPECT_EQ(contentOf(path_), "abcdef");
    stream.close();
}

TEST_F(FileOutputStreamTest, BlocksOfEverySizeAroundTheBuffer) {
    std::string expected;
    auto stream = FileOutputStream::create(path_);
    char letter = 'a';
    for (const std::size_t size : {std::size_t{1}, kBufferSize - 1, std::size_t{1}, kBufferSize,
                                   kBufferSize + 1, 5 * kBufferSize + 3, std::size_t{7}}) {
        const std::string block(size, letter++);
        expected += block;
        stream.write(block);
    }
    stream.close();
    EXPECT_EQ(contentOf(path_), expected);
}

TEST_F(FileOutputStreamTest, SinglePutsAndReservesCrossTheBuffer) {
    std::string expected;
    auto stream = FileOutputStream::create(path_);
    for (unsigned i = 0; i < 3 * kBufferSize; ++i) {
        expected += static_cast<char>('a' + i % 26);
        stream.put(expected.back());
    }
    for (unsigned i = 0; i < 60; ++i) {
        expected += std::string(OutputStream::kMaxReserve - 1, static_cast<char>('A' + i % 26));
        char* room = stream.reserve(OutputStream::kMaxReserve);
        stream.commit(std::fill_n(room, OutputStream::kMaxReserve - 1, expected.back()));
    }
    stream.close();
    EXPECT_EQ(contentOf(path_), expected);
}

TEST_F(FileOutputStreamTest, DestructorWritesNothing) {
    {
        FileOutputStream::create(path_).write("lost");
    }
    EXPECT_EQ(contentOf(path_), "");
}

TEST_F(FileOutputStreamTest, MovedStreamGoesOn) {
    auto first = FileOutputStream::create(path_);
    first.write("a");
    FileOutputStream second(std::move(first));
    second.write("b");
    second.close();
    EXPECT_EQ(contentOf(path_), "ab");
}

TEST_F(FileOutputStreamTest, CreatesNoFileThatExists) {
    folder_.write("file", "kept");
    EXPECT_EQ(messageOf<std::system_error>([&] { FileOutputStream::create(path_); }),
              "cannot create the file: File exists");
    EXPECT_EQ(contentOf(path_), "kept");
    EXPECT_EQ(messageOf<std::system_error>(
                  [&] { FileOutputStream::create(folder_.path() / "none" / "file"); }),
              "cannot create the file: No such file or directory");
}

TEST_F(FileOutputStreamTest, TakesThePermissionsLessTheUmask) {
    const mode_t umask = ::umask(027);
    FileOutputStream::create(path_, 0664).close();
    ::umask(umask);
    struct stat status{};
    ASSERT_EQ(::stat(path_.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(FileOutputStreamTest, WritingAfterCloseFails) {
    auto stream = FileOutputStream::create(path_);
    stream.close();
    EXPECT_THROW(stream.put('a'), std::system_error);
    EXPECT_THROW(stream.write("abc"), std::system_error);
}

TEST_F(FileOutputStreamTest, FullDiskIsTold) {
    const int full = ::open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    constexpr auto kNoSpace = "cannot write the file: No space left on device";
    {
        FileOutputStream stream(full);
        stream.write("a");
        EXPECT_EQ(messageOf<std::system_error>([&] { stream.flush(); }), kNoSpace);
        EXPECT_EQ(messageOf<std::system_error>([&] { stream.close(); }), kNoSpace);
        EXPECT_EQ(messageOf<std::system_error>([&] { stream.sync(); }), kNoSpace);
    }
    {
        FileOutputStream stream(full);
        const std::string large(2 * kBufferSize, 'x');
        EXPECT_EQ(messageOf<std::system_error>([&] { stream.write(large); }), kNoSpace);
    }
    ::close(full);
}

TEST_F(FileOutputStreamTest, GoesOnAfterAFailureWithoutLossOrRepetition) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC | O_NONBLOCK), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETPIPE_SZ, 4096), 4096);
    FileOutputStream stream(ends[1]);
    std::string expected;
    for (unsigned i = 0; expected.size() < 10000; ++i)
        expected += std::to_string(i) + " ";
    stream.write(expected);

    std::string arrived;
    for (bool whole = false; !whole;) {
        try {
            stream.flush();
            whole = true;
        } catch (const std::system_error& error) {
            ASSERT_EQ(error.code(), std::errc::resource_unavailable_try_again);
        }
        char part[4096];
        const ssize_t size = ::read(ends[0], part, sizeof part);
        ASSERT_GT(size, 0);
        arrived.append(part, static_cast<std::size_t>(size));
    }
    EXPECT_EQ(arrived, expected);
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(FileOutputStreamTest, ABorrowedDescriptorStaysOpen) {
    int ends[2];
    ASSERT_EQ(::pipe2(ends, O_CLOEXEC), 0);
    {
        FileOutputStream stream(ends[1]);
        stream.write("a");
        stream.sync();
        stream.write("b");
        stream.close();
    }
    EXPECT_EQ(::write(ends[1], "c", 1), 1);
    char text[4] = {};
    EXPECT_EQ(::read(ends[0], text, sizeof text), 3);
    EXPECT_STREQ(text, "abc");
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace corvane::utils::io
