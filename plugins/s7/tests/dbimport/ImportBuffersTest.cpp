#include "DeclarationTable.hpp"
#include "ImportTesting.hpp"
#include "SourceMixture.hpp"

#include "dbimport/parser/PlainDeclaration.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>

/// What an import makes of a file does not depend on how much of it is at hand at once. With all of
/// it at hand declarations are read on the short way where there is one, and byte by byte never.
namespace corvane::workbench::plugins::s7Driver {
namespace {

using testing::dataBlock;
using testing::kOtherCases;
using testing::kPlainCases;
using testing::OtherCase;
using testing::PlainCase;
using testing::SourceMixture;
using testing::TrickleInputStream;

constexpr std::array<std::size_t, 5> kChunkSizes = {1, 7, 17, 64, 150};

/// What an import ends with.
struct Outcome {
    bool accepted;
    std::string text; ///< the document and the memory of its blocks, or the message

    bool operator==(const Outcome&) const = default;

    friend void PrintTo(const Outcome& outcome, std::ostream* stream) {
        *stream << (outcome.accepted ? "document " : "message ") << outcome.text;
    }
};

Outcome outcomeOf(utils::io::InputStream& stream) {
    static const ImportLimits limits{.elements = 10'000, .documentBytes = std::size_t{1} << 24U};
    Outcome outcome{true, ""};
    const std::string error = testing::errorOf([&] {
        const ui::ImportedDocument document =
            makeImportDocument(testing::emptyPlc(), stream, limits);
        outcome.text = document.text;
        for (const ui::MemoryUse& use : document.memory)
            outcome.text += "\n" + use.name + "=" + std::to_string(use.bytes);
    });
    return outcome.text.empty() ? Outcome{false, error} : outcome;
}

/// Imports the source in every way and expects the same each time. Returns whether it is accepted.
bool checkAllWays(const std::string& source) {
    utils::io::MemoryInputStream whole(source);
    const Outcome expected = outcomeOf(whole);
    for (const std::size_t chunkSize : kChunkSizes) {
        TrickleInputStream chunks(source, chunkSize);
        EXPECT_EQ(outcomeOf(chunks), expected)
            << "in chunks of " << chunkSize << ": " << ::testing::PrintToString(source);
    }
    return expected.accepted;
}

TEST(ImportBuffers, PlainDeclarationsAreWhatTheGrammarReads) {
    std::string all;
    for (const PlainCase& one : kPlainCases) {
        EXPECT_TRUE(checkAllWays(dataBlock(one.text))) << one.text;
        EXPECT_TRUE(
            checkAllWays(dataBlock(std::string(one.text).append(" // x\n").append(one.text))))
            << one.text;
        all.append(one.text).append("\n");
    }
    EXPECT_TRUE(checkAllWays(dataBlock(all)));
    EXPECT_TRUE(checkAllWays(dataBlock("a : Struct\n" + all + "END_STRUCT;")));
    EXPECT_TRUE(checkAllWays(dataBlock(
        "a { ExternalWritable := 'False' } : Array[0..2] of Struct\n" + all + "END_STRUCT;")));
}

TEST(ImportBuffers, TheGrammarsMessagesStay) {
    for (const OtherCase& one : kOtherCases)
        for (const std::string_view before : {"", "x : Int := 5; "})
            for (const std::string_view behind : {"", "\ny : Bool;"})
                checkAllWays(dataBlock(std::string(before).append(one.text).append(behind)));
}

// What stands behind a plain declaration is blanks, comments, faults, and the end of the file.
TEST(ImportBuffers, WhatFollowsAPlainDeclaration) {
    for (const std::string_view behind :
         {"// x\n", "(* x *)", "(* (* *) *) // y\r\n\t", "/", "(", "/ ", "( ", "(* open",
          "/ b : Int;", "(b : Int;", ";", "}", "'", "\"b\" : Int;", "\xEF\xBB\xBF", "END_STRUCT",
          "BEGIN"})
        for (const std::string_view next : {"", "c : Int;", "\nc : Bool;\n"})
            checkAllWays(dataBlock(std::string("a : Int := 5;").append(behind).append(next)));
}

TEST(ImportBuffers, AFileThatEndsAnywhere) {
    const std::string source = dataBlock("Speed { ExternalWritable := 'False'} : Int := 100; // x\n"
                                         "Text : String[20] := 'a b';\n"
                                         "Axis : Struct Pos : Real; END_STRUCT;");
    EXPECT_TRUE(checkAllWays(source));
    EXPECT_TRUE(checkAllWays(""));
    for (std::size_t size = 1; size < source.size() - std::string_view("_DATA_BLOCK\n").size();
         ++size)
        EXPECT_FALSE(checkAllWays(source.substr(0, size))) << source.substr(0, size);
}

/// How often the sources of one kind are accepted, and how often they begin with what is plain.
struct Share {
    std::size_t sources = 0;
    std::size_t accepted = 0;
    std::size_t plain = 0;
};

template <class Source>
Share checkMany(std::size_t count, const Source& nextMembers) {
    Share share;
    for (; share.sources < count && !::testing::Test::HasFailure(); ++share.sources) {
        const std::string source = dataBlock(nextMembers());
        PlainDeclaration declaration;
        const auto members = std::string_view(source).substr(dataBlock("").find("STRUCT\n") + 7);
        share.plain += readPlainDeclaration(members, declaration) ? 1 : 0;
        share.accepted += checkAllWays(source) ? 1 : 0;
    }
    return share;
}

constexpr std::size_t kSources = 2'000;

/// Checks many sources of a kind, of which at least one in `plainOneIn` begins with what is plain,
/// and neither nearly all nor nearly none are accepted: else the kind would tell too little.
template <class Source>
void checkKind(std::size_t plainOneIn, const Source& nextMembers) {
    const Share share = checkMany(kSources, nextMembers);
    ASSERT_EQ(share.sources, kSources);
    EXPECT_GT(share.accepted, kSources / 5);
    EXPECT_LT(share.accepted, kSources - kSources / 5);
    EXPECT_GT(share.plain, kSources / plainOneIn);
}

TEST(ImportBuffers, ChangedDeclarationsEndAlike) {
    SourceMixture mixture(20'240'611);
    checkKind(5, [&] { return mixture.changedDeclarations(); });
}

TEST(ImportBuffers, MixedWordsEndAlike) {
    SourceMixture mixture(19'991'231);
    checkKind(20, [&] { return mixture.words(); });
}

} // namespace
} // namespace corvane::workbench::plugins::s7Driver
