#include <corvane/utils/io/StringOutputStream.hpp>

#include "MessageOf.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>

namespace corvane::utils::io {
namespace {

TEST(StringOutputStream, KeepsWhatIsWritten) {
    StringOutputStream stream;
    EXPECT_EQ(stream.description(), "in-memory text string");
    EXPECT_EQ(stream.size(), 0U);
    std::string expected;
    for (int round = 0; round < 1000; ++round) {
        stream.put(static_cast<char>('a' + round % 26));
        stream.write("some text ");
        char* const target = stream.reserve(16);
        stream.commit(std::fill_n(target, 3, '.'));
        expected += static_cast<char>('a' + round % 26);
        expected += "some text ...";
    }
    EXPECT_EQ(stream.size(), expected.size());
    EXPECT_EQ(stream.take(), expected);
}

TEST(StringOutputStream, TakesBlocksOfAnySize) {
    StringOutputStream stream;
    const std::string block(100'000, 'x');
    stream.put('a');
    stream.write(block);
    stream.write("");
    stream.put('b');
    stream.write(block);
    EXPECT_EQ(stream.take(), "a" + block + "b" + block);
}

TEST(StringOutputStream, IsEmptyWhenItsTextIsTaken) {
    StringOutputStream stream;
    EXPECT_EQ(stream.take(), "");
    stream.write("first");
    EXPECT_EQ(stream.take(), "first");
    EXPECT_EQ(stream.size(), 0U);
    EXPECT_EQ(stream.take(), "");
    stream.put('2');
    stream.flush();
    EXPECT_EQ(stream.take(), "2");
}

TEST(StringOutputStream, StopsAtItsLargestSize) {
    for (const std::size_t maximum : {0U, 1U, 15U, 16U, 100U}) {
        StringOutputStream stream(maximum);
        for (std::size_t size = 0; size < maximum; ++size)
            stream.put('x');
        EXPECT_THROW(stream.put('x'), std::length_error);
        EXPECT_EQ(stream.take(), std::string(maximum, 'x'));
    }
}

TEST(StringOutputStream, SaysThatItCannotGrow) {
    StringOutputStream stream(20);
    const std::string block(15, 'x');
    stream.write(block);
    EXPECT_EQ(test::messageOf<std::length_error>([&] {
                  stream.write(block);
                  return 0;
              }),
              "string data size exceeds representable size");
    EXPECT_EQ(stream.take(), block);
}

// The memory that a string gets has been somebody else's before.
TEST(StringOutputStream, BytesThatNobodyWroteAreZero) {
    constexpr std::size_t kSize = OutputStream::kMaxReserve;
    for (const std::size_t room : {std::size_t{0}, 2 * kSize, 64 * kSize}) {
        StringOutputStream stream;
        for (std::size_t size = 1; size < 128 * kSize; size *= 2)
            static_cast<void>(std::string(size, 'x'));
        stream.reserveRoom(room);
        for (int block = 0; block < 40; ++block)
            stream.commit(stream.reserve(kSize) + kSize);
        EXPECT_EQ(stream.take(), std::string(40 * kSize, '\0')) << room;
    }
}

TEST(StringOutputStream, WritesOneTextAfterTheOther) {
    StringOutputStream stream;
    EXPECT_EQ(stream.view(), "");
    stream.clear();
    for (const std::size_t size : {5U, 3U, 100'000U, 0U, 7U}) {
        const std::string text(size, static_cast<char>('a' + size % 26));
        stream.write(text);
        EXPECT_EQ(stream.view(), text);
        EXPECT_EQ(stream.size(), size);
        stream.clear();
        EXPECT_EQ(stream.size(), 0U);
        EXPECT_EQ(stream.view(), "");
    }
    stream.commit(stream.reserve(100) + 100);
    EXPECT_EQ(stream.view(), std::string(100, '\0'));
    stream.write("end");
    EXPECT_EQ(stream.take(), std::string(100, '\0') + "end");
}

TEST(StringOutputStream, RoomMayBeMadeAtAnyTime) {
    StringOutputStream stream;
    stream.write("begun");
    stream.reserveRoom(100'000);
    stream.write(", ");
    stream.reserveRoom(1);
    stream.write("ended");
    EXPECT_EQ(stream.size(), 12U);
    EXPECT_EQ(stream.take(), "begun, ended");
}

} // namespace
} // namespace corvane::utils::io
