#include "ImportTesting.hpp"

#include "dbimport/facts/ForeignNames.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Names that are not UTF-8: what the project knows of them, and what a user is told.
namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::importError;

std::string block(std::string_view name, std::string_view members = "x : Int;") {
    return std::string("DATA_BLOCK \"")
        .append(name)
        .append("\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n")
        .append(members)
        .append("\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
}

TEST(ForeignNames, CharactersAreThoseOfWindows1252) {
    const std::pair<std::string_view, std::u16string_view> rows[] = {
        {"plain ~\x7F", u"plain ~\u007F"},
        {"\x80\x82\x83\x84\x85\x86\x87", u"\u20AC\u201A\u0192\u201E\u2026\u2020\u2021"},
        {"\x88\x89\x8A\x8B\x8C\x8E", u"\u02C6\u2030\u0160\u2039\u0152\u017D"},
        {"\x91\x92\x93\x94\x95\x96\x97", u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014"},
        {"\x98\x99\x9A\x9B\x9C\x9E\x9F", u"\u02DC\u2122\u0161\u203A\u0153\u017E\u0178"},
        {"\x81\x8D\x8F\x90\x9D", u"\u0081\u008D\u008F\u0090\u009D"},
        {"\xA0\xC4\xD6\xDC\xDF\xE4\xF6\xFC\xFF",
         u"\u00A0\u00C4\u00D6\u00DC\u00DF\u00E4\u00F6\u00FC\u00FF"},
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(utils::string::detail::utf8ToUtf16(windows1252ToUtf8(bytes)), text);
}

TEST(ForeignNames, DifferentBytesAreDifferentTexts) {
    std::set<std::string> texts;
    for (int byte = 0; byte != 256; ++byte)
        texts.insert(windows1252ToUtf8(std::string(1, static_cast<char>(byte))));
    EXPECT_EQ(texts.size(), 256U);
}

// A name is read as a whole: that some of its bytes would be UTF-8 does not matter.
TEST(ForeignNames, NamesAreReadWhole) {
    ForeignNames names;
    std::string name = "\xC3\xA4";
    names.makeDocumentText(name);
    EXPECT_EQ(name, "\xC3\xA4");
    EXPECT_EQ(names.count(), 0U);
    EXPECT_EQ(names.first(), "");
    name = "\xC3\xA4\xE4";
    names.makeDocumentText(name);
    EXPECT_EQ(name, "\xC3\x83\xC2\xA4\xC3\xA4");
    std::string other = "\xFF";
    names.makeDocumentText(other);
    EXPECT_EQ(names.count(), 2U);
    EXPECT_EQ(names.first(), name);
}

TEST(ForeignNames, TwoBlocksStayTwoAndKeepTheirNumbers) {
    testing::PlcProject project;
    project.addCommand("A");
    const auto text = [](int first, int second) {
        const auto entry = [](std::string_view name, int number) {
            return R"({"@Skill.S7.DataBlock":{"name":")" + std::string(name) + R"(","DBNumber":)" +
                   std::to_string(number) + R"(,"children":[]}})";
        };
        return "[" + entry("\xC3\xA4", first) + "," + entry("\xC3\xB6", second) + "]";
    };
    const std::string source = block("\xE4", "") + block("\xF6", "");
    EXPECT_EQ(testing::import(source, project.plc()).text, text(1, 2));
    project.addDataBlock("\xC3\xA4", 7);
    project.addDataBlock("\xC3\xB6", 4);
    EXPECT_EQ(testing::import(source, project.plc()).text, text(7, 4));
}

TEST(ForeignNames, NamesThatBecomeEqualAreRefused) {
    const std::string message = "Cannot have DB with the same name in the same .db file";
    EXPECT_EQ(importError(block("\xE4") + block("\xC3\xA4")), message);
    EXPECT_EQ(importError(block("\xC3\xA4") + block("\xE4")), message);
    EXPECT_EQ(importError(block("\xE4") + block("\xE4")), message);
    EXPECT_EQ(importError(block("\xE4") + block("\xC4")), "no error");
}

TEST(ForeignNames, MembersAreReadTheSameWay) {
    const std::string text = testing::import(dataBlock("\"K\xFChlung\" : Struct \xE4 : Int; "
                                                       "\xDF : Array[0..0] of Bool; "
                                                       "END_STRUCT;"))
                                 .text;
    for (const std::string_view name : {"K\xC3\xBChlung", "\xC3\xA4", "\xC3\x9F[0]"})
        EXPECT_NE(text.find("\"name\":\"" + std::string(name) + "\""), std::string::npos) << name;
}

/// What of the warnings of an import is about names.
std::vector<ui::ImportWarning> warningsOfNames(std::string_view source) {
    std::vector<ui::ImportWarning> warnings = testing::import(source).warnings;
    std::erase_if(warnings, [](const ui::ImportWarning& warning) {
        return !warning.text.starts_with(u"names that are not UTF-8");
    });
    return warnings;
}

TEST(ForeignNames, TheResultSaysSo) {
    EXPECT_TRUE(warningsOfNames(block("\xC3\xA4", "\"\xE2\x82\xAC\" : Int;")).empty());
    const auto warnings =
        warningsOfNames(block("Data") + block("a/\xE4") +
                        block("Other", "a : Int; \"\x80\" : Array[1..9] of Int; \xE4 : Struct "
                                       "\xF6 : Bool; END_STRUCT;") +
                        "DATA_BLOCK \"\xF6\" END_DATA_BLOCK");
    ASSERT_EQ(warnings.size(), 2U) << "a block without a body is not imported";
    EXPECT_EQ(warnings[0].element, "a~1\xC3\xA4");
    EXPECT_EQ(warnings[0].text, u"names that are not UTF-8 were read as Windows-1252: 1 in this "
                                u"data block, the first is \u201Ca/\u00E4\u201D");
    EXPECT_EQ(warnings[1].element, "Other");
    EXPECT_EQ(warnings[1].text, u"names that are not UTF-8 were read as Windows-1252: 3 in this "
                                u"data block, the first is \u201C\u20AC\u201D");
    EXPECT_FALSE(warnings[1].line);
    EXPECT_FALSE(warnings[1].column);
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
