#include "workbench/core/import/SourceLine.hpp"

#include "TemporaryFolder.hpp"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>
#include <string_view>

namespace corvane::workbench::core::test {

namespace {

class SourceLineTest : public ::testing::Test {
protected:
    /// The line and its caret, one below the other; "none" where there is no such place.
    std::string shown(std::string_view bytes, std::uint64_t line, std::uint64_t column,
                      std::size_t width = 20) const {
        const auto source = sourceLine(folder_.write("source.db", bytes), line, column, width);
        return source ? source->text + "\n" + source->caret : "none";
    }

    utils::test::TemporaryFolder folder_;
};

} // namespace

TEST_F(SourceLineTest, EndsLinesAsEditorsDo) {
    constexpr std::string_view kText = "one\ntwo\r\nthree\rfour\n\nsix";
    EXPECT_EQ(shown(kText, 1, 1), "one\n^");
    EXPECT_EQ(shown(kText, 2, 3), "two\n  ^");
    EXPECT_EQ(shown(kText, 3, 2), "three\n ^");
    EXPECT_EQ(shown(kText, 4, 4), "four\n   ^");
    EXPECT_EQ(shown(kText, 5, 1), "\n^");
    EXPECT_EQ(shown(kText, 6, 3), "six\n  ^");
}

TEST_F(SourceLineTest, MayPointBehindTheLastCharacter) {
    EXPECT_EQ(shown("one\n", 1, 4), "one\n   ^");
    EXPECT_EQ(shown("one\n", 2, 1), "\n^");
    EXPECT_EQ(shown("", 1, 1), "\n^");
    EXPECT_EQ(shown("one\n", 3, 1), "none");
    EXPECT_EQ(shown("one", 1, 5), "none");
    EXPECT_EQ(shown("one", 0, 1), "none");
    EXPECT_EQ(shown("one", 1, 0), "none");
}

TEST_F(SourceLineTest, CountsCharactersNotBytes) {
    EXPECT_EQ(shown("\u00E4\u20AC x", 1, 4), "\u00E4\u20AC x\n   ^");
    EXPECT_EQ(shown("\xE4 x", 1, 3), "\uFFFD x\n  ^");
    EXPECT_EQ(shown("\xEF\xBB\xBFx y\nz", 1, 3), "x y\n  ^");
}

TEST_F(SourceLineTest, KeepsTabsAboveTheCaret) {
    EXPECT_EQ(shown("\ta\tb : Quad;", 1, 4), "\ta\tb : Quad;\n\t \t^");
}

TEST_F(SourceLineTest, ShowsTheSurroundingsOfTheColumn) {
    const std::string line = "0123456789abcdefghijABCDEFGHIJ";
    EXPECT_EQ(shown(line, 1, 1, 10), "0123456789\u2026\n^");
    EXPECT_EQ(shown(line, 1, 11, 10), "\u202656789abcde\u2026\n      ^");
    EXPECT_EQ(shown(line, 1, 30, 10), "\u2026ABCDEFGHIJ\n          ^");
    EXPECT_EQ(shown(line, 1, 31, 10), "\u2026ABCDEFGHIJ\n           ^");
    EXPECT_EQ(shown(line, 1, 15, 30), line + "\n              ^");
}

TEST_F(SourceLineTest, LooksOnlyAtPlainFiles) {
    EXPECT_FALSE(sourceLine(folder_.path() / "none.db", 1, 1, 20));
    EXPECT_FALSE(sourceLine(folder_.path(), 1, 1, 20));
    const auto pipe = folder_.path() / "pipe.db";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_FALSE(sourceLine(pipe, 1, 1, 20)) << "it would wait for a writer";
}

TEST_F(SourceLineTest, ReadsNoEndlessLine) {
    const std::string line(std::size_t{3} << 20U, 'x');
    EXPECT_EQ(shown("a\n" + line, 2, 3, 4), "xxxx\u2026\n  ^");
    EXPECT_EQ(shown("a\n" + line, 2, line.size(), 4), "none");
}

} // namespace corvane::workbench::core::test
