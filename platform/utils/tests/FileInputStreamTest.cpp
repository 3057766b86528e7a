#include <corvane/utils/io/FileInputStream.hpp>

#include "MessageOf.hpp"
#include "TemporaryFolder.hpp"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <system_error>
#include <thread>

namespace corvane::utils::io {
namespace {

using test::messageOf;

constexpr std::size_t kBufferSize = 64 * 1024;

/// Bytes that tell where they stand: no two pieces of the text are alike.
std::string numbered(std::size_t size) {
    std::string text;
    for (unsigned line = 0; text.size() < size; ++line)
        text += std::to_string(line) + "\n";
    text.resize(size);
    return text;
}

std::string read(InputStream& stream, std::size_t most = std::string::npos) {
    std::string bytes;
    while (bytes.size() < most && stream.ensureBuffer()) {
        const auto buffered = static_cast<std::size_t>(stream.bufferEnd() - stream.cursor());
        const std::size_t size = std::min(buffered, most - bytes.size());
        bytes.append(stream.cursor(), size);
        stream.advanceTo(stream.cursor() + size);
    }
    return bytes;
}

class FileInputStreamTest : public testing::Test {
protected:
    test::TemporaryFolder folder_;
};

TEST_F(FileInputStreamTest, ReadsFilesOfEverySizeAroundTheBuffer) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, kBufferSize - 1, kBufferSize,
                                   kBufferSize + 1, 2 * kBufferSize, 3 * kBufferSize + 17}) {
        const std::string text = numbered(size);
        FileInputStream stream(folder_.write("file", text));
        EXPECT_EQ(read(stream), text) << size;
        EXPECT_TRUE(stream.eof());
        EXPECT_TRUE(stream.eof());
    }
}

TEST_F(FileInputStreamTest, RewindsAfterAnyAmount) {
    const std::string text = numbered(3 * kBufferSize + 17);
    const auto path = folder_.write("file", text);
    for (const std::size_t amount : {std::size_t{0}, std::size_t{3}, kBufferSize, kBufferSize + 1,
                                     2 * kBufferSize, text.size()}) {
        FileInputStream stream(path);
        EXPECT_EQ(read(stream, amount), text.substr(0, amount));
        stream.rewind();
        EXPECT_EQ(read(stream, 3), text.substr(0, 3));
        stream.rewind();
        EXPECT_EQ(read(stream), text) << amount;
        stream.rewind();
        EXPECT_EQ(read(stream), text) << amount;
    }
}

TEST_F(FileInputStreamTest, LineEndingsSpanTwoBuffers) {
    for (const std::string_view ending : {"\n", "\r", "\r\n"}) {
        const std::string line(kBufferSize - 1, '/');
        FileInputStream stream(
            folder_.write("file", std::string(line).append(ending).append("rest")));
        stream.skipLine();
        stream.skipLineEnding();
        EXPECT_EQ(read(stream), "rest");
    }
}

TEST_F(FileInputStreamTest, BlanksSpanTwoBuffers) {
    FileInputStream stream(folder_.write("file", std::string(3 * kBufferSize, ' ') + "x"));
    EXPECT_TRUE(stream.skipWhitespace());
    EXPECT_EQ(read(stream), "x");
}

TEST_F(FileInputStreamTest, TellsTheReasonWithoutThePath) {
    EXPECT_EQ(messageOf<std::system_error>([&] { FileInputStream(folder_.path() / "none"); }),
              "cannot open the file: No such file or directory");
    FileInputStream directory(folder_.path());
    EXPECT_EQ(messageOf<std::system_error>([&] { directory.readElement(); }),
              "cannot read the file: Is a directory");
}

TEST_F(FileInputStreamTest, ClosingEndsTheStream) {
    FileInputStream stream(folder_.write("file", "abc"));
    EXPECT_EQ(stream.readElement(), 'a');
    stream.close();
    EXPECT_TRUE(stream.eof());
    EXPECT_THROW(stream.rewind(), std::system_error);
    stream.close();
    EXPECT_TRUE(stream.eof());
}

/// A pipe that a second thread fills, in portions.
class FileInputStreamPipeTest : public FileInputStreamTest {
protected:
    FileInputStreamPipeTest() : pipe_(folder_.path() / "pipe") {
        EXPECT_EQ(::mkfifo(pipe_.c_str(), 0600), 0);
    }

    void feed(std::string text, std::size_t portion) {
        writer_ = std::jthread([path = pipe_, text = std::move(text), portion] {
            const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
            for (std::size_t at = 0; at < text.size(); at += portion) {
                const std::size_t size = std::min(portion, text.size() - at);
                EXPECT_EQ(::write(descriptor, text.data() + at, size), static_cast<ssize_t>(size));
            }
            ::close(descriptor);
        });
    }

    std::filesystem::path pipe_;
    std::jthread writer_;
};

TEST_F(FileInputStreamPipeTest, TakesBackALookAtTheBeginning) {
    const std::string text = numbered(2 * kBufferSize + 5);
    feed(text, 1000);
    FileInputStream stream(pipe_);
    EXPECT_EQ(read(stream, 1500), text.substr(0, 1500));
    stream.rewind();
    EXPECT_EQ(read(stream), text);
}

TEST_F(FileInputStreamPipeTest, SaysWhenItCannotGoBack) {
    feed(numbered(2 * kBufferSize), 1000);
    FileInputStream stream(pipe_);
    EXPECT_EQ(read(stream).size(), 2 * kBufferSize);
    EXPECT_EQ(messageOf<std::system_error>([&] { stream.rewind(); }),
              "cannot rewind the file: Illegal seek");
}

TEST_F(FileInputStreamPipeTest, WaitsForAWriterThatComesAndForWhatItWrites) {
    writer_ = std::jthread([path = pipe_] {
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
        std::this_thread::sleep_for(std::chrono::milliseconds(100));
        EXPECT_EQ(::write(descriptor, "late", 4), 4);
        ::close(descriptor);
    });
    FileInputStream stream(pipe_);
    EXPECT_EQ(read(stream), "late");
}

TEST_F(FileInputStreamPipeTest, TakesAWriterThatWritesNothingForAnEmptyFile) {
    feed("", 1);
    FileInputStream stream(pipe_);
    EXPECT_EQ(read(stream), "");
}

TEST_F(FileInputStreamPipeTest, DoesNotWaitForAWriterForEver) {
    EXPECT_EQ(messageOf<std::system_error>([&] { FileInputStream stream(pipe_); }),
              "nothing writes to the pipe: No such device or address");
}

} // namespace
} // namespace corvane::utils::io
