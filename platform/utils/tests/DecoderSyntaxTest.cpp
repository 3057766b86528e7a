#include <corvane/utils/json/Decoder.hpp>

#include "DecoderTesting.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>

namespace corvane::utils::json::decoder {
namespace {

using namespace std::string_view_literals;

struct GoodCase {
    std::string_view text;
    std::string_view read;
};

constexpr GoodCase kGood[] = {
    {"{}", "{}"},
    {"[]", "[]"},
    {" [ ] ", "[]"},
    {"1", "1"},
    {"  -0.5e-7  ", "-0.5e-7"},
    {"\"a\"", "'a'"},
    {"true", "true"},
    {"false\n", "false"},
    {"null", "null"},
    {"\xef\xbb\xbf{}", "{}"},
    {R"({"a":1,"b":[true,false,null],"c":{"d":"e"}})", "{a:1,b:[true,false,null],c:{d:'e'}}"},
    {"{\r\n\t\"a\" : [ 1 , 2 ] ,\n \"b\":{ } }", "{a:[1,2],b:{}}"},
    {"[[[],[[]]],[]]", "[[[],[[]]],[]]"},
    {"[0,-0,10,3.90,1E5,1e+5,2.5E-10,123456789012345678901234567890]",
     "[0,-0,10,3.90,1E5,1e+5,2.5E-10,123456789012345678901234567890]"},
    {R"(["\"\\\/","a\tb\nc\rd","\b\f"])", "['\"\\/','a\tb\nc\rd','\b\f']"},
    {R"(["\u0041\u00e9\u20AC","\uD83D\ude00","\uffff"])",
     "['A\xc3\xa9\xe2\x82\xac','\xf0\x9f\x98\x80','\xef\xbf\xbf']"},
    {R"({"\u006eame":1,"":2})", "{name:1,:2}"},
    {R"(["ends with a backslash \\","\\\""])", R"(['ends with a backslash \','\"'])"},
    {"[\"Gr\xc3\xb6\xc3\x9f"
     "e, \xf0\x9f\x98\x80 and a longer rest\"]",
     "['Gr\xc3\xb6\xc3\x9f"
     "e, \xf0\x9f\x98\x80 and a longer rest']"},
    {"[\"{not} [brackets], : \"]", "['{not} [brackets], : ']"},
    {R"({"a":1,"a":2})", "{a:1,a:2}"},
};

TEST(DecoderSyntax, ReadsInDocumentOrder) {
    for (const auto& [text, read] : kGood)
        EXPECT_EQ(readDocument(text), read) << text;
}

TEST(DecoderSyntax, NulEscapeIsACharacter) {
    const Document document(R"("a\u0000b")");
    EXPECT_EQ(document.root().asString().view(), "a\0b"sv);
}

struct BadCase {
    std::string_view text;
    std::string_view message;
};

constexpr BadCase kMalformed[] = {
    {"", "there is no value (line 1, column 1)"},
    {"\xef\xbb\xbf", "there is no value (line 1, column 1)"},
    {" \t\r\n ", "there is no value (line 2, column 2)"},
    {"{", "unexpected end of the text (line 1, column 2)"},
    {"[", "unexpected end of the text (line 1, column 2)"},
    {"[1", "unexpected end of the text (line 1, column 3)"},
    {"[1,\n", "unexpected end of the text (line 2, column 1)"},
    {"[[1]", "unexpected end of the text (line 1, column 5)"},
    {"{\"a\"", "unexpected end of the text (line 1, column 5)"},
    {"{\"a\":", "unexpected end of the text (line 1, column 6)"},
    {"{\"a\":1", "unexpected end of the text (line 1, column 7)"},
    {"{\"a\":{}", "unexpected end of the text (line 1, column 8)"},
    {"]", "expected a value (line 1, column 1)"},
    {"}", "expected a value (line 1, column 1)"},
    {",", "expected a value (line 1, column 1)"},
    {":", "expected a value (line 1, column 1)"},
    {"x", "expected a value (line 1, column 1)"},
    {"+1", "expected a value (line 1, column 1)"},
    {".5", "expected a value (line 1, column 1)"},
    {"'a'", "expected a value (line 1, column 1)"},
    {"\\1", "expected a value (line 1, column 1)"},
    {R"(\"a")", "the string is not closed (line 1, column 4)"},
    {"// comment\n1", "expected a value (line 1, column 1)"},
    {"\0"sv, "expected a value (line 1, column 1)"},
    {"[1}", "expected ',' or ']' (line 1, column 3)"},
    {"{\"a\":1]", "expected ',' or '}' (line 1, column 7)"},
    {"[1,]", "expected a value (line 1, column 4)"},
    {"[,1]", "expected a value (line 1, column 2)"},
    {"[1,,2]", "expected a value (line 1, column 4)"},
    {"[1 2]", "expected ',' or ']' (line 1, column 4)"},
    {"[1:2]", "expected ',' or ']' (line 1, column 3)"},
    {R"(["a""b"])", "expected ',' or ']' (line 1, column 5)"},
    {"[[1][2]]", "expected ',' or ']' (line 1, column 5)"},
    {"{\"a\":1,}", "expected a member's name in double quotes (line 1, column 8)"},
    {"{,}", "expected a member's name in double quotes (line 1, column 2)"},
    {"{1:2}", "expected a member's name in double quotes (line 1, column 2)"},
    {"{a:2}", "expected a member's name in double quotes (line 1, column 2)"},
    {"{[]:2}", "expected a member's name in double quotes (line 1, column 2)"},
    {"{\"a\" 1}", "expected ':' after the member's name (line 1, column 6)"},
    {"{\"a\"}", "expected ':' after the member's name (line 1, column 5)"},
    {R"({"a","b"})", "expected ':' after the member's name (line 1, column 5)"},
    {"{\"a\"::1}", "expected a value (line 1, column 6)"},
    {"{\"a\":}", "expected a value (line 1, column 6)"},
    {R"({"a":,"b":1})", "expected a value (line 1, column 6)"},
    {R"({"a":1 "b":2})", "expected ',' or '}' (line 1, column 8)"},
    {R"({"a":1:"b"})", "expected ',' or '}' (line 1, column 7)"},
    {"1 2", "unexpected text behind the outermost value (line 1, column 3)"},
    {"{}\n{}", "unexpected text behind the outermost value (line 2, column 1)"},
    {"[]]", "unexpected text behind the outermost value (line 1, column 3)"},
    {"{}x", "unexpected text behind the outermost value (line 1, column 3)"},
    {"[],", "unexpected text behind the outermost value (line 1, column 3)"},
    {"\"a\"b", "unexpected text behind the outermost value (line 1, column 4)"},
    {"truex", "expected true (line 1, column 1)"},
    {"true\"a\"", "expected true (line 1, column 1)"},
    {"[True]", "expected a value (line 1, column 2)"},
    {"[tru]", "expected true (line 1, column 2)"},
    {"[t", "unexpected end of the text (line 1, column 3)"},
    {"fals", "expected false (line 1, column 1)"},
    {"[nul]", "expected null (line 1, column 2)"},
    {"[nullx]", "expected null (line 1, column 2)"},
    {"NaN", "expected a value (line 1, column 1)"},
    {"[01]", "not a number (line 1, column 2)"},
    {"[-]", "not a number (line 1, column 2)"},
    {"[-a]", "not a number (line 1, column 2)"},
    {"[-01]", "not a number (line 1, column 2)"},
    {"[1.]", "not a number (line 1, column 2)"},
    {"[1.e5]", "not a number (line 1, column 2)"},
    {"[1e]", "not a number (line 1, column 2)"},
    {"[1e+]", "not a number (line 1, column 2)"},
    {"[1.5x]", "not a number (line 1, column 2)"},
    {"[1\"a\"]", "not a number (line 1, column 2)"},
    {"[0x10]", "not a number (line 1, column 2)"},
    {"[1.2.3]", "not a number (line 1, column 2)"},
    {"[1-2]", "not a number (line 1, column 2)"},
    {"[1\0]"sv, "not a number (line 1, column 2)"},
    {"1.", "not a number (line 1, column 1)"},
    {"\"abc", "the string is not closed (line 1, column 1)"},
    {R"(["a", "b])", "the string is not closed (line 1, column 7)"},
    {"{\"a", "the string is not closed (line 1, column 2)"},
    {R"("a\")", "the string is not closed (line 1, column 1)"},
    {"\"", "the string is not closed (line 1, column 1)"},
    {"[\"a\nb\"]", "control character in a string (line 1, column 4)"},
    {"{\"a: 1,\n\"b\": 2}", "control character in a string (line 1, column 8)"},
    {"[\"a\tb\"]", "control character in a string (line 1, column 4)"},
    {"[\"a\0b\"]"sv, "control character in a string (line 1, column 4)"},
    {R"(["ab\x"])", "unknown escape in a string (line 1, column 5)"},
    {R"(["\a"])", "unknown escape in a string (line 1, column 3)"},
    {R"({"\q":1})", "unknown escape in a string (line 1, column 3)"},
    {R"(["\u12"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["\u12g4"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["\u+123"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["\u-123"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["\u0x12"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["\u"])", "\\u in a string without four hexadecimal digits (line 1, column 3)"},
    {R"(["a\ud800"])", "half of a surrogate pair in a string (line 1, column 4)"},
    {R"(["\ud800x"])", "half of a surrogate pair in a string (line 1, column 3)"},
    {R"(["\ud800\n"])", "half of a surrogate pair in a string (line 1, column 3)"},
    {R"(["\ud800\u0041"])", "half of a surrogate pair in a string (line 1, column 3)"},
    {R"(["\udc00\ud800"])", "half of a surrogate pair in a string (line 1, column 3)"},
    {"[\"a\xff\"]", "the text is not UTF-8 (line 1, column 4)"},
    {"[\n\"\xc3\xa9\xe2\x82\"]", "the text is not UTF-8 (line 2, column 4)"},
    {"[]\x80", "the text is not UTF-8 (line 1, column 3)"},
    {"{\"a\": 1}\r\n{\"b\"}", "unexpected text behind the outermost value (line 2, column 1)"},
    {"[1,\r2,\r\n3\n4]", "expected ',' or ']' (line 4, column 1)"},
    {"\xef\xbb\xbf[1 2]", "expected ',' or ']' (line 1, column 4)"},
};

TEST(DecoderSyntax, MalformedTexts) {
    for (const auto& [text, message] : kMalformed)
        EXPECT_EQ(messageOf([&] { readDocument(text); }), "malformed JSON: " + std::string(message))
            << text;
}

TEST(DecoderSyntax, EveryCutOfADocumentIsMalformed) {
    constexpr std::string_view kText =
        R"({"a":[1,{"b":"x\n\u00e9"},true],"c":{"d":null,"e":[]},"f":-1.5e3})";
    EXPECT_NO_THROW(readDocument(kText));
    for (std::size_t size = 0; size < kText.size(); ++size)
        EXPECT_THROW(readDocument(kText.substr(0, size)), DecodeError) << size;
}

TEST(DecoderSyntax, DepthIsBounded) {
    EXPECT_NO_THROW(Document(nested(kMaxDepth, "[", "", "]")));
    EXPECT_EQ(messageOf([] { Document(nested(kMaxDepth + 1, "[", "", "]")); }),
              "malformed JSON: more than 3072 arrays and objects inside one another "
              "(line 1, column 3073)");
    EXPECT_THROW(Document(std::string(1000000, '[')), DecodeError);
    EXPECT_THROW(Document(nested(1000000, "{\"a\":", "1", "}")), DecodeError);
    // Width is not depth.
    EXPECT_EQ(readDocument("[" + nested(10000, "[],", "[]", "") + "]").size(), 30004u);
}

TEST(DecoderSyntax, SpecialCharactersAtEveryPlaceOfAWord) {
    for (std::size_t place = 0; place < 24; ++place)
        for (const auto& [escaped, decoded] :
             {std::pair{"\\\"", "\""}, std::pair{"\\\\", "\\"}, std::pair{"\xc2\xa2", "\xc2\xa2"},
              std::pair{"!", "!"}, std::pair{"#", "#"}, std::pair{"\\u0022", "\""}}) {
            const std::string before(place, 'x');
            const std::string text = "\"" + before + escaped + "yy\"";
            EXPECT_EQ(readDocument(text), "'" + before + decoded + "yy'");
        }
}

} // namespace
} // namespace corvane::utils::json::decoder
