#include <corvane/utils/io/MemoryInputStream.hpp>

#include "MessageOf.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

namespace corvane::utils::io {
namespace {

/// Hands its bytes out in portions, so that whatever spans two bytes also spans two buffers.
class PortionStream final : public InputStream {
public:
    PortionStream(std::string_view bytes, std::size_t portion) : bytes_(bytes), portion_(portion) {}

    void rewind() override {
        position_ = 0;
        setFirstBuffer(nullptr, nullptr);
    }

protected:
    bool refill() override {
        const std::string_view next = bytes_.substr(position_, portion_);
        position_ += next.size();
        setBuffer(next.data(), next.data() + next.size());
        return !next.empty();
    }

private:
    std::string_view bytes_;
    std::size_t portion_;
    std::size_t position_ = 0;
};

std::string restOf(InputStream& stream) {
    std::string rest;
    while (stream.ensureBuffer()) {
        rest.append(stream.cursor(), stream.bufferEnd());
        stream.advanceTo(stream.bufferEnd());
    }
    return rest;
}

constexpr std::size_t kPortions[] = {1, 2, 3, 7, 4096};

TEST(InputStream, ReadsByteByByte) {
    MemoryInputStream stream("ab");
    EXPECT_EQ(stream.tryPeek(), 'a');
    EXPECT_EQ(stream.readElement(), 'a');
    EXPECT_FALSE(stream.eof());
    stream.skipElement();
    EXPECT_TRUE(stream.eof());
    EXPECT_EQ(stream.tryPeek(), std::nullopt);
    EXPECT_FALSE(stream.ensureBuffer());
}

TEST(InputStream, ReadingBeyondTheEndFails) {
    MemoryInputStream stream("");
    EXPECT_EQ(test::messageOf<std::runtime_error>([&] { stream.readElement(); }),
              "unexpected end of input");
    EXPECT_EQ(test::messageOf<std::runtime_error>([&] { stream.skipElement(); }),
              "unexpected end of input");
}

TEST(InputStream, BytesAboveAsciiAreBytes) {
    MemoryInputStream stream("\xff\x80");
    EXPECT_EQ(stream.readElement(), '\xff');
    EXPECT_EQ(stream.readElement(), '\x80');
}

TEST(InputStream, RewindGoesToTheFirstByte) {
    MemoryInputStream stream("abc");
    EXPECT_EQ(restOf(stream), "abc");
    stream.rewind();
    EXPECT_EQ(restOf(stream), "abc");
}

TEST(InputStream, AdvanceToConsumesAPart) {
    MemoryInputStream stream("abc");
    ASSERT_TRUE(stream.ensureBuffer());
    stream.advanceTo(stream.cursor() + 2);
    EXPECT_EQ(restOf(stream), "c");
}

struct SkipCase {
    std::string_view text;
    bool skipped;
    std::string_view rest;
};

TEST(InputStream, SkipWhitespace) {
    constexpr SkipCase kCases[] = {
        {"", false, ""},       {"a", false, "a"},          {" a", true, "a"},
        {" \t\r\n", true, ""}, {"\r\n\t  x ", true, "x "}, {"\v", false, "\v"},
        {"\f", false, "\f"},   {"\xa0", false, "\xa0"},
    };
    for (const auto& [text, skipped, rest] : kCases)
        for (const std::size_t portion : kPortions) {
            PortionStream stream(text, portion);
            EXPECT_EQ(stream.skipWhitespace(), skipped) << text;
            EXPECT_EQ(restOf(stream), rest) << text;
        }
}

struct LineCase {
    std::string_view text;
    std::string_view afterLine;
    std::string_view afterEnding;
};

TEST(InputStream, SkipLineAndItsEnding) {
    constexpr LineCase kCases[] = {
        {"", "", ""},
        {"abc", "", ""},
        {"abc\ndef", "\ndef", "def"},
        {"abc\r\ndef", "\r\ndef", "def"},
        {"abc\rdef", "\rdef", "def"},
        {"\n\nx", "\n\nx", "\nx"},
        {"\r\rx", "\r\rx", "\rx"},
        {"a\n\rx", "\n\rx", "\rx"},
        {"a\r\n\r\nx", "\r\n\r\nx", "\r\nx"},
        {"a\r", "\r", ""},
        {"a\r\n", "\r\n", ""},
        {"a\rb\nc", "\rb\nc", "b\nc"},
    };
    for (const auto& [text, afterLine, afterEnding] : kCases)
        for (const std::size_t portion : kPortions) {
            PortionStream stream(text, portion);
            stream.skipLine();
            EXPECT_EQ(restOf(stream), afterLine) << text;
            stream.rewind();
            stream.skipLine();
            stream.skipLineEnding();
            EXPECT_EQ(restOf(stream), afterEnding) << text;
        }
}

TEST(InputStream, SkipLineEndingLeavesOtherBytes) {
    MemoryInputStream stream("x\n");
    stream.skipLineEnding();
    EXPECT_EQ(restOf(stream), "x\n");
}

TEST(InputStream, SkipLineFindsTheEndingAtEveryDistance) {
    for (std::size_t length = 0; length < 600; ++length)
        for (const std::string_view ending : {"\n", "\r", "\r\n"}) {
            const std::string text = std::string(length, '-').append(ending).append("rest");
            MemoryInputStream stream(text);
            stream.skipLine();
            stream.skipLineEnding();
            EXPECT_EQ(restOf(stream), "rest") << length;
        }
}

TEST(InputStream, ManyLinesWithOneKindOfEndingAreSkippedInOnePass) {
    for (const char ending : {'\n', '\r'}) {
        const std::string text(8 * 1024 * 1024, ending);
        MemoryInputStream stream(text);
        std::size_t lines = 0;
        for (; !stream.eof(); ++lines) {
            stream.skipLine();
            stream.skipLineEnding();
        }
        EXPECT_EQ(lines, text.size());
    }
}

} // namespace
} // namespace corvane::utils::io
