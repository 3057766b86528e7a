#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

constexpr std::string_view kType = "TYPE \"Motor\"\nSTRUCT\n   on : Bool;   // it runs\n"
                                   "   speed : Int;\nEND_STRUCT;\nEND_TYPE\n";

constexpr std::string_view kPrepared = "DATA_BLOCK \"Line\"\n"
                                       "{ S7_Optimized_Access := 'FALSE' }\n"
                                       "   STRUCT\n"
                                       "      m : Struct   // (type Motor, Motor.udt line 1)\n"
                                       "         on : Bool;   // it runs\n"
                                       "         speed : Int;\n"
                                       "      END_STRUCT;\n"
                                       "   END_STRUCT;\n"
                                       "BEGIN\n"
                                       "END_DATA_BLOCK\n";

constexpr std::string_view kMissing =
    "line.db:4:5: left out “Line”: needs type “Motor”, which is in none of the files; "
    "name the file that declares it, too\n";

constexpr const char* kGuessed = "warning: line.db:1: a block number is not in the file and was "
                                 "guessed: “Line” got 1\n";

/// A data block, and the type that it needs, in a file of its own.
void writeLineAndType(const Sandbox& place) {
    place.write("line.db", dataBlock("Line", "m : \"Motor\";"));
    place.write("Motor.udt", kType);
}

} // namespace

TEST(Prepare, WritesThePlainSourceOfAllFiles) {
    const Sandbox place;
    writeLineAndType(place);
    EXPECT_EQ(place.run({"prepare", "line.db", "Motor.udt"}), done(kPrepared));
    EXPECT_EQ(place.run({"prepare", "Motor.udt", "line.db"}), done(kPrepared));
    EXPECT_EQ(place.run({"prepare", "line.db", "Motor.udt", "--output", "plain.db"}), done());
    EXPECT_EQ(place.read("plain.db"), kPrepared);
    EXPECT_EQ(place.run({"prepare", "plain.db"}), done(kPrepared));
    EXPECT_EQ(listingOf(place.run({"import", "plain.db", "--document"}).out).size(), 2U);
}

TEST(Prepare, TellsWhatItLeavesOutAndWhatWouldHelp) {
    const Sandbox place;
    writeLineAndType(place);
    EXPECT_EQ(
        place.run({"prepare", "line.db"}),
        (Result{.exitCode = 1,
                .out = "",
                .err = std::string(kMissing) + "corvane: nothing in the files can be imported\n"}));
    place.write("b.db", dataBlock("Other", "x : Int;"));
    const Result told = place.run({"prepare", "line.db", "b.db"});
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.err, kMissing);
    EXPECT_TRUE(told.out.starts_with("DATA_BLOCK \"Other\"")) << told;
}

TEST(Prepare, TakesTheWishesOfTheUser) {
    const Sandbox place;
    place.write("a.awl", "DATA_BLOCK DB 1\nSTRUCT\n"
                         "h { ExternalAccessible := 'False'} : Array[1..\"N\"] of Int;\n"
                         "END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n"
                         "DATA_BLOCK DB 2\nSTRUCT\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    EXPECT_EQ(place.run({"prepare", "a.awl"}).exitCode, 1);
    EXPECT_EQ(place.run({"prepare", "--standard-access", "--show-hidden", "--constant", "N=2",
                         "--block", "DB1", "a.awl"}),
              done("DATA_BLOCK \"DB1\"\n{ S7_Optimized_Access := 'FALSE' }\n   STRUCT\n"
                   "      h { ExternalWritable := 'False'} : Array[1..2] of Int;\n"
                   "   END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n"));
}

TEST(Prepare, LeavesFilesAloneWhereItFails) {
    const Sandbox place;
    writeLineAndType(place);
    place.write("plain.db", "old");
    EXPECT_EQ(place.run({"prepare", "line.db", "--output", "plain.db"}).exitCode, 1);
    EXPECT_EQ(place.read("plain.db"), "old");
    EXPECT_EQ(place.run({"prepare", "line.db", "Motor.udt", "--output", "./line.db"}),
              failed("./line.db is one of the files to prepare; name another one"));
    EXPECT_EQ(place.run({"prepare", "none.db"}), failed("none.db: No such file or directory"));
    place.write("a.txt", "");
    EXPECT_EQ(place.run({"prepare", "a.txt"}), failed("no loaded plug-in prepares “.txt” files"));
    EXPECT_EQ(place.run({"prepare", "line.db", "--constant", "N"}),
              failed("“N” is not of the form NAME=VALUE"));
    EXPECT_EQ(place.files(),
              (std::vector<std::string>{"Motor.udt", "a.txt", "line.db", "plain.db"}));
}

TEST(ImportPrepared, ImportsWhatPrepareMakes) {
    const Sandbox place;
    writeLineAndType(place);
    static_cast<void>(place.printed({"prepare", "line.db", "Motor.udt", "--output", "plain.db"}));
    const std::string document = place.run({"import", "plain.db", "--document"}).out;
    EXPECT_EQ(place.run({"import", "line.db", "Motor.udt", "--prepare", "--document"}),
              (Result{.exitCode = 0, .out = document, .err = kGuessed}))
        << "what is told leads to the user's file";
    const Result into =
        place.run({"import", "line.db", "Motor.udt", "--prepare", "--project", "p.json"});
    EXPECT_EQ(into.exitCode, 0) << into;
    EXPECT_TRUE(into.out.starts_with("Imported line.db, Motor.udt into p.json, /PLC: ")) << into;
    EXPECT_EQ(listingOfProject(place.read("p.json")), listingOf(document));
}

TEST(ImportPrepared, ReadsOldExportsAndNamesNoFileButTheUsers) {
    const Sandbox place;
    place.write("line.db", dataBlock("Line", "M\xFCll : Int;"));
    EXPECT_TRUE(place.run({"import", "line.db", "--prepare", "--document"})
                    .out.contains(R"("name":"Müll")"));
    const Result told = place.run({"import", "line.db", "--prepare", "--json"});
    EXPECT_EQ(told.exitCode, 0);
    EXPECT_EQ(told.err, kGuessed);
    EXPECT_TRUE(told.out.contains(R"("file": "line.db")")) << told;
    EXPECT_FALSE(told.out.contains("corvane-")) << told;
}

TEST(ImportPrepared, FailsWhereNothingIsLeft) {
    const Sandbox place;
    writeLineAndType(place);
    EXPECT_EQ(
        place.run({"import", "line.db", "--prepare"}),
        (Result{.exitCode = 1,
                .out = "",
                .err = std::string(kMissing) + "corvane: nothing in the files can be imported\n"}));
    EXPECT_EQ(place.run({"import", "line.db", "Motor.udt"}),
              misused("The following argument was not expected: Motor.udt", "import"));
    EXPECT_EQ(place.run({"import", "line.db", "--block", "Line"}),
              misused("--block requires --prepare", "import"));
}

} // namespace corvane::test
