#include <corvane/utils/json/Decoder.hpp>
#include <corvane/utils/json/Encoder.hpp>

#include "DecoderTesting.hpp"
#include "StringStream.hpp"

#include <gtest/gtest.h>

#include <array>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::utils::json::decoder {
namespace {

struct TypeCase {
    Type type;
    std::string_view name;
    std::string_view example;
    void (*read)(const Value&);
};

constexpr TypeCase kTypes[] = {
    {Type::object, "an object", "{}", [](const Value& v) { static_cast<void>(v.asObject()); }},
    {Type::array, "an array", "[1]", [](const Value& v) { static_cast<void>(v.asArray()); }},
    {Type::string, "a string", "\"a\"", [](const Value& v) { static_cast<void>(v.asString()); }},
    {Type::boolean, "a boolean", "false", [](const Value& v) { static_cast<void>(v.asBool()); }},
    {Type::number, "a number", "12", nullptr},
    {Type::null, "null", "null", nullptr},
};

TEST(Decoder, WrongTypesNameMemberAndPlace) {
    for (const TypeCase& found : kTypes) {
        const Document document("{\"x\": 1,\n \"address\": " + std::string(found.example) + "}");
        const Value value = document.root().asObject().find("address").value();
        EXPECT_EQ(value.type(), found.type);
        for (const TypeCase& expected : kTypes) {
            if (!expected.read)
                continue;
            if (expected.type == found.type)
                EXPECT_NO_THROW(expected.read(value));
            else
                EXPECT_EQ(messageOf([&] { expected.read(value); }),
                          "member \"address\": expected " + std::string(expected.name) +
                              ", found " + std::string(found.name) + " (line 2, column 13)");
        }
        EXPECT_EQ(value.parseNumberString(), found.type == Type::number ? found.example : "");
    }
}

TEST(Decoder, ErrorsWithoutAMemberNameOnlyThePlace) {
    const Document document("[1, \"a\"]");
    Array array = document.root().asArray();
    EXPECT_EQ(array.next().value().member(), "");
    const Value second = array.next().value();
    EXPECT_EQ(messageOf([&] { return second.asBool(); }),
              "expected a boolean, found a string (line 1, column 5)");
    EXPECT_FALSE(array.next());
    EXPECT_FALSE(array.next());
}

TEST(Decoder, RangeErrorsTellTheRange) {
    const Document document(R"({"name": "PLC", "rack": 256, "slot": "x"})");
    const Object object = document.root().asObject();
    const Value rack = object.find("rack").value();
    EXPECT_EQ(rack.parseNumberString(), "256");
    EXPECT_EQ(messageOf([&] { rack.throwRangeError(0, 255); }),
              "member \"rack\": value out of range, expected 0 to 255 (line 1, column 25)");
    const Value slot = object.find("slot").value();
    EXPECT_EQ(slot.parseNumberString(), "");
    EXPECT_EQ(messageOf([&] { slot.throwRangeError(1, 18446744073709551615u); }),
              "member \"slot\": value out of range, expected 1 to 18446744073709551615 (line 1, "
              "column 38)");
}

TEST(Decoder, ErrorsCarryTheirParts) {
    const Document document("{\n  \"rack\": true}");
    try {
        static_cast<void>(document.root().asObject().find("rack").value().asString());
        FAIL();
    } catch (const DecodeError& error) {
        EXPECT_EQ(error.member(), "rack");
        EXPECT_EQ(error.position().line, 2u);
        EXPECT_EQ(error.position().column, 11u);
    }
}

TEST(Decoder, MessagesStayOneShortLine) {
    const std::string longName = std::string(79, 'n') + "\xc3\xa9" + std::string(100, 'n');
    const Document document(R"({"a\nb\u007f": 1, ")" + longName + "\": 2}");
    Object object = document.root().asObject();
    EXPECT_EQ(messageOf([&] { return object.next()->value.asString(); }),
              "member \"a?b?\": expected a string, found a number (line 1, column 16)");
    EXPECT_EQ(messageOf([&] { return object.next()->value.asString(); }),
              "member \"" + std::string(79, 'n') +
                  "...\": expected a string, found a number (line 1, column 204)");
}

TEST(Decoder, ObjectFailStandsWhereTheObjectBegins) {
    const Document document("[\n {\"a\": 1}]");
    const Object object = document.root().asArray().next()->asObject();
    EXPECT_EQ(messageOf([&] { object.fail("one key expected"); }),
              "one key expected (line 2, column 2)");
    EXPECT_EQ(messageOf([&] { object.fail("unknown member", "a"); }),
              "member \"a\": unknown member (line 2, column 2)");
}

TEST(Decoder, FindSearchesFromTheStart) {
    const Document document(R"({"a": {"c": 0}, "b": [1], "c": "first", "c": "second"})");
    Object object = document.root().asObject();
    EXPECT_EQ(object.find("c")->asString().view(), "first");
    EXPECT_EQ(object.find("a")->asObject().find("c")->parseNumberString(), "0");
    EXPECT_FALSE(object.find("d"));
    EXPECT_FALSE(object.find(""));
    EXPECT_EQ(object.next()->name.view(), "a");
    EXPECT_TRUE(object.find("c"));
    EXPECT_EQ(object.next()->name.view(), "b");
}

TEST(Decoder, FindComparesDecodedNames) {
    const Document document(R"({"n\u0061me": 1, "a\"b": 2})");
    const Object object = document.root().asObject();
    EXPECT_EQ(object.find("name")->parseNumberString(), "1");
    EXPECT_EQ(object.find("a\"b")->parseNumberString(), "2");
    EXPECT_FALSE(object.find("n\\u0061me"));
}

TEST(Decoder, ValuesAreReadInAnyOrder) {
    const Document document(R"({"a": [1, 2], "b": {"c": "x"}})");
    Object object = document.root().asObject();
    const Value a = object.next().value().value;
    const Value b = object.next().value().value;
    EXPECT_FALSE(object.next());
    EXPECT_EQ(readAll(b), "{c:'x'}");
    EXPECT_EQ(readAll(a), "[1,2]");
    EXPECT_EQ(readAll(b), "{c:'x'}");
    object.rewind();
    EXPECT_EQ(object.next()->name.view(), "a");
}

constexpr std::array<std::string_view, 2> kHostMembers = {"name", "children"};

TEST(Decoder, PassesOverTheHostsMembers) {
    const Document document(
        R"({"children": [[1, {}]], "address": "x", "name": "n", "rack": 0, "nam": 1})");
    Object object = document.root().asObject();
    object.passOver(kHostMembers);
    for (unsigned round = 0; round < 2; ++round) {
        EXPECT_EQ(object.next()->name.view(), "address");
        EXPECT_EQ(object.next()->name.view(), "rack");
        EXPECT_EQ(object.next()->name.view(), "nam");
        EXPECT_FALSE(object.next());
        object.rewind();
    }
    EXPECT_EQ(object.find("name")->asString().view(), "n");
}

TEST(Decoder, PassedOverNamesStandOnce) {
    for (const std::string_view second : {R"("name")", R"("n\u0061me")"}) {
        const Document document("{\"name\": 1, \"a\": 2,\n" + std::string(second) + ": 3}");
        Object object = document.root().asObject();
        EXPECT_EQ(object.next()->name.view(), "name");
        object.rewind();
        object.passOver(kHostMembers);
        EXPECT_EQ(object.next()->name.view(), "a");
        EXPECT_EQ(messageOf([&] { return object.next(); }),
                  "member \"name\": duplicate member (line 2, column 1)");
    }
}

TEST(Decoder, PassesOverABoundedNumberOfNames) {
    const Document document("{}");
    Object object = document.root().asObject();
    const std::vector<std::string_view> names(Object::kMaxPassedOver + 1, "a");
    EXPECT_NO_THROW(object.passOver(std::span(names).first(Object::kMaxPassedOver)));
    EXPECT_THROW(object.passOver(names), std::length_error);
}

/// Reads an element the way the host does: its name, the element's own members, its children.
unsigned countElements(Object element) {
    EXPECT_EQ(element.find("name")->asString().view(), "n");
    element.rewind();
    element.passOver(kHostMembers);
    EXPECT_EQ(element.next()->value.parseNumberString(), "7");
    EXPECT_FALSE(element.next());
    const auto children = element.find("children");
    if (!children)
        return 1;
    unsigned count = 1;
    Array array = children->asArray();
    while (const auto child = array.next()) {
        Object wrapper = child->asObject();
        count += countElements(wrapper.next()->value.asObject());
        EXPECT_FALSE(wrapper.next());
    }
    return count;
}

TEST(Decoder, ReadsDeepTreesOfElements) {
    constexpr unsigned kDepth = 900;
    const Document document(nested(kDepth, R"({"name":"n","children":[{"@Skill.S7.Struct":)",
                                   R"({"name":"n","own":7})", R"(}],"own":7})"));
    EXPECT_EQ(countElements(document.root().asObject()), kDepth + 1);
}

TEST(Decoder, WhatNobodyReadsIsNotLookedInto) {
    const Document document(R"({"a": tru, "b": "\x", "c": 01, "d": 1})");
    Object object = document.root().asObject();
    std::string names;
    while (const auto member = object.next())
        names += member->name.view();
    EXPECT_EQ(names, "abcd");
    EXPECT_EQ(messageOf([&] { return object.find("b")->asString(); }),
              "malformed JSON: unknown escape in a string (line 1, column 18)");
}

TEST(Decoder, StringsLiveAsLongAsTheDocument) {
    std::string text = "[\"plain\"";
    for (unsigned i = 0; i < 1000; ++i)
        text += ",\"line\\n" + std::to_string(i) + "\"";
    Document first(text + "]");
    const Document document(std::move(first));
    std::vector<String> strings;
    Array array = document.root().asArray();
    while (const auto entry = array.next())
        strings.push_back(entry->asString());
    EXPECT_EQ(strings[0].view(), "plain");
    for (unsigned i = 0; i < 1000; ++i)
        EXPECT_EQ(strings[i + 1].view(), "line\n" + std::to_string(i));
}

TEST(Decoder, ReadsWhatTheEncoderWrites) {
    for (const auto format : {encoder::Format::lines, encoder::Format::compact}) {
        test::StringStream stream;
        {
            encoder::Document document(stream, format);
            encoder::Object object = document.object();
            object.addStringView("text", "a\"\\\b\f\n\r\t\x01\xc3\xa9\xf0\x9f\x98\x80");
            object.addWideString("wide", u"\u20ac\U0001f600");
            object.addStringView("malformed", "\xff");
            object.addNumber("number", -5);
            object.add("flag", true);
            object.addNull("none");
            encoder::Array array = object.addArray("array");
            for (unsigned i = 0; i < 3; ++i)
                array.addObject().addNumber("i", i);
        }
        EXPECT_EQ(readDocument(stream.text()),
                  "{text:'a\"\\\b\f\n\r\t\x01\xc3\xa9\xf0\x9f\x98\x80',"
                  "wide:'\xe2\x82\xac\xf0\x9f\x98\x80',malformed:'\xef\xbf\xbd',number:-5,"
                  "flag:true,none:null,array:[{i:0},{i:1},{i:2}]}");
    }
}

TEST(Decoder, LargeDocuments) {
    std::string text = "[";
    for (unsigned i = 0; i < 200000; ++i)
        text += (i ? ",\n" : "\n") + (R"({"name":"item","n":)" + std::to_string(i)) + "}";
    text += "\n]";
    const Document document(text);
    Array array = document.root().asArray();
    unsigned count = 0;
    while (const auto entry = array.next())
        EXPECT_EQ(entry->asObject().find("n")->parseNumberString(), std::to_string(count++));
    EXPECT_EQ(count, 200000u);
    document.expectEnd();

    text[text.size() - 2] = ' ';
    text.back() = '}';
    EXPECT_EQ(messageOf([&] { Document{text}; }),
              "malformed JSON: expected ',' or ']' (line 200001, column 28)");
}

} // namespace
} // namespace corvane::utils::json::decoder
