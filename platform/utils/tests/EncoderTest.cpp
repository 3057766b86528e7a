#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/json/Encoder.hpp>

#include "StringStream.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <string_view>

namespace corvane::utils::json::encoder {
namespace {

using test::StringStream;

std::string write(Format format, auto content) {
    StringStream stream;
    Document document(stream, format);
    content(document);
    return stream.text();
}

void writeProject(Document& document) {
    Object project = document.object();
    project.addNumber("corvane", 1);
    Array elements = project.addArray("elements");
    {
        Object entry = elements.addObject();
        Object plc = entry.addObject("@Skill.S7.PLC");
        plc.addStringView("name", "PLC");
        Array children = plc.addArray("children");
        for (const std::string_view name : {"a", "b"}) {
            Object child = children.addObject();
            Object item = child.addObject("@Skill.S7.Item");
            item.addStringView("name", name);
            item.add("writable", name == "a");
            static_cast<void>(item.addArray("tags"));
        }
    }
    Object last = elements.addObject();
}

TEST(Encoder, LinesGiveEachEntryALineOfItsOwn) {
    EXPECT_EQ(write(Format::lines, writeProject),
              R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "children": [
    {"@Skill.S7.Item": {"name": "a", "writable": true, "tags": []}},
    {"@Skill.S7.Item": {"name": "b", "writable": false, "tags": []}}
  ]}},
  {}
]})");
}

TEST(Encoder, CompactWritesNoBlank) {
    EXPECT_EQ(write(Format::compact, writeProject),
              R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"PLC","children":[)"
              R"({"@Skill.S7.Item":{"name":"a","writable":true,"tags":[]}},)"
              R"({"@Skill.S7.Item":{"name":"b","writable":false,"tags":[]}}]}},{}]})");
}

TEST(Encoder, ArraysInsideArrays) {
    const auto content = [](Document& document) {
        Array outer = document.array();
        {
            Array inner = outer.addArray();
            inner.addPreformattedNumber("1");
            inner.addStringView("two");
            static_cast<void>(inner.addArray());
        }
        outer.addPreformattedNumber("3.50");
    };
    EXPECT_EQ(write(Format::lines, content),
              "[\n  [\n    1,\n    \"two\",\n    []\n  ],\n  3.50\n]");
    EXPECT_EQ(write(Format::compact, content), "[[1,\"two\",[]],3.50]");
}

TEST(Encoder, EmptyDocuments) {
    for (const Format format : {Format::lines, Format::compact}) {
        EXPECT_EQ(write(format, [](Document& d) { static_cast<void>(d.array()); }), "[]");
        EXPECT_EQ(write(format, [](Document& d) { static_cast<void>(d.object()); }), "{}");
    }
}

TEST(Encoder, EveryKindOfMember) {
    EXPECT_EQ(write(Format::compact,
                    [](Document& document) {
                        Object object = document.object();
                        object.addStringView("text", "t");
                        object.addWideString("wide", u"w");
                        object.addPreformattedNumber("number", "-1.50e+3");
                        object.addNumber("least", std::numeric_limits<std::int64_t>::min());
                        object.addNumber("most", std::numeric_limits<std::uint64_t>::max());
                        object.add("yes", true);
                        object.add("no", false);
                        object.addNull("none");
                        static_cast<void>(object.addObject("object"));
                        static_cast<void>(object.addArray("array"));
                        object.addStringView(Key::of("a \"key\"\n"), "");
                        object.addStringView(Key::of(std::string(5000, 'k')), "");
                    }),
              R"({"text":"t","wide":"w","number":-1.50e+3,"least":-9223372036854775808,)"
              R"("most":18446744073709551615,"yes":true,"no":false,"none":null,)"
              R"("object":{},"array":[],"a \"key\"\n":"",")" +
                  std::string(5000, 'k') + R"(":""})");
}

TEST(Encoder, DeepIndentationIsRightBeyondOneReserve) {
    constexpr std::size_t kDepth = 3000;
    StringStream stream;
    detail::Writer writer(stream, Format::lines);
    std::string expected;
    for (std::size_t depth = 0; depth < kDepth; ++depth) {
        if (depth > 0) {
            writer.beginEntry(true);
            expected += "\n" + std::string(2 * depth, ' ');
        }
        writer.open('[');
        expected += '[';
    }
    for (std::size_t depth = kDepth; depth-- > 0;) {
        const bool empty = depth + 1 == kDepth;
        writer.close(']', empty);
        expected += empty ? "]" : "\n" + std::string(2 * depth, ' ') + "]";
    }
    EXPECT_EQ(stream.text(), expected);
}

struct StringCase {
    std::string_view text;
    std::string_view written;
};

constexpr StringCase kStrings[] = {
    {"", R"("")"},
    {"plain", R"("plain")"},
    {"exactly8", R"("exactly8")"},
    {"exactly 16 bytes", R"("exactly 16 bytes")"},
    {"/ stays, ~ and \x7f too", "\"/ stays, ~ and \x7f too\""},
    {"\"", R"("\"")"},
    {"\\", R"("\\")"},
    {"a\"b\\c", R"("a\"b\\c")"},
    {"\b\f\n\r\t", R"("\b\f\n\r\t")"},
    {{"\0", 1}, R"("\u0000")"},
    {"\x01\x0b\x1f", R"("\u0001\u000b\u001f")"},
    {"at the very end\n", R"("at the very end\n")"},
    {"1234567\"", R"("1234567\"")"},
    {"12345678\"", R"("12345678\"")"},
    {"Gr\xc3\xb6\xc3\x9f"
     "e \xf0\x9f\x98\x80",
     "\"Gr\xc3\xb6\xc3\x9f"
     "e \xf0\x9f\x98\x80\""},
    {"\xc3\xa9\"\xc3\xa9", "\"\xc3\xa9\\\"\xc3\xa9\""},
    {"bad \xff end", "\"bad \xef\xbf\xbd end\""},
    {"cut \xe2\x82", "\"cut \xef\xbf\xbd\""},
    {"both \xff and \n", "\"both \xef\xbf\xbd and \\n\""},
};

std::string written(std::string_view text) {
    return write(Format::compact, [&](Document& d) { d.array().addStringView(text); });
}

std::string writtenWide(std::u16string_view text) {
    return write(Format::compact, [&](Document& d) { d.object().addWideString("", text); });
}

TEST(Encoder, Strings) {
    for (const auto& [text, expected] : kStrings) {
        EXPECT_EQ(written(text), "[" + std::string(expected) + "]");
        EXPECT_EQ(writtenWide(string::detail::utf8ToUtf16(text)),
                  "{\"\":" + std::string(expected) + "}");
    }
}

TEST(Encoder, LoneSurrogatesAreReplaced) {
    EXPECT_EQ(writtenWide(std::u16string{u'a', 0xd800, u'b'}), "{\"\":\"a\xef\xbf\xbd"
                                                               "b\"}");
}

TEST(Encoder, EveryByteAtEveryPlaceOfAWord) {
    for (unsigned byte = 0; byte < 0x80; ++byte)
        for (std::size_t place = 0; place < 20; ++place) {
            std::string text(20, 'x');
            text[place] = static_cast<char>(byte);
            decoder::Document document(written(text));
            decoder::Array array = document.root().asArray();
            EXPECT_EQ(array.next().value().asString().view(), text) << byte << " at " << place;
        }
}

TEST(Encoder, TextsLongerThanAnyBuffer) {
    for (const std::size_t size : {4089u, 4090u, 4091u, 4096u, 70000u}) {
        const std::string text(size, 'x');
        EXPECT_EQ(written(text), "[\"" + text + "\"]");
        EXPECT_EQ(written(text + "\n"), "[\"" + text + "\\n\"]");
        EXPECT_EQ(writtenWide(std::u16string(size, u'x')), "{\"\":\"" + text + "\"}");
    }
}

TEST(Encoder, AnExceptionLeavesTheTextAsItIs) {
    StringStream stream;
    const auto writeAndFail = [&] {
        Document document(stream, Format::compact);
        Object object = document.object();
        Array array = object.addArray("a");
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(writeAndFail(), std::runtime_error);
    EXPECT_EQ(stream.text(), R"({"a":[)");
}

TEST(Encoder, WritesWholeDocumentsWhileAnExceptionPasses) {
    StringStream stream;
    struct WritesOnExit {
        StringStream& target;
        ~WritesOnExit() {
            Document document(target, Format::compact);
            document.array().addStringView("x");
        }
    };
    const auto fail = [&] {
        const WritesOnExit writer{stream};
        throw std::runtime_error("stop");
    };
    EXPECT_THROW(fail(), std::runtime_error);
    EXPECT_EQ(stream.text(), R"(["x"])");
}

/// Has room for the opening bracket only.
class FullStream final : public io::OutputStream {
public:
    FullStream() {
        cursor_ = &byte_;
        end_ = cursor_ + 1;
    }
    [[nodiscard]] std::string_view description() const override { return "full"; }

protected:
    void overflow() override { throw std::length_error("full"); }
    void writeBlock(std::string_view) override { throw std::length_error("full"); }

private:
    char byte_ = 0;
};

TEST(Encoder, ClosingAScopeThrowsWhatTheStreamThrows) {
    FullStream stream;
    Document document(stream, Format::compact);
    EXPECT_THROW(static_cast<void>(document.array()), std::length_error);
}

} // namespace
} // namespace corvane::utils::json::encoder
