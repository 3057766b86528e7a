#include "DbSource.hpp"
#include "Sandbox.hpp"

#include <gtest/gtest.h>

namespace corvane::test {

namespace {

/// Texts that mean something to one or another reader of command lines, and nothing here.
const std::vector<std::string> kTexts{"++",    "[a,b]", "[Address=1,Rack number=2]",
                                      "[]",    "[",     "{}",
                                      "%%",    "{a}",   "-",
                                      "=",     "=a",    "==a",
                                      "a=b",   "@file", "#note",
                                      "\"a\"", "'a'",   "`a`",
                                      "a b",   " ",     "$HOME",
                                      "*",     "\\n",   "show",
                                      "set",   "-5",    "!",
                                      "true",  ";",     ",",
                                      "a,b",   "//",    "?",
                                      "&&",    "größe", "add[0..1]"};

/// Texts that are options unless "--" stands in front of them.
const std::vector<std::string> kOptionLike{"-x",       "--",        "--help", "--json",
                                           "--plugin", "--at=/PLC", "-h"};

std::string escaped(std::string_view name) {
    std::string text;
    for (const char c : name) {
        if (c == '~')
            text += "~0";
        else if (c == '/')
            text += "~1";
        else
            text += c;
    }
    return text;
}

class ArgumentsTest : public testing::Test {
public:
    ArgumentsTest() { place.write("P.json", kProject); }

    static constexpr std::string_view kProject = R"({"corvane": 1, "elements": [
  {"@Skill.S7.PLC": {"name": "PLC", "address": "a", "rack": 0, "slot": 0}}
]}
)";

    Sandbox place;
};

} // namespace

TEST_F(ArgumentsTest, ReachTheNamesOfElements) {
    auto texts = kTexts;
    texts.insert(texts.end(), kOptionLike.begin(), kOptionLike.end());
    for (const auto& text : texts) {
        place.write("P.json", kProject);
        EXPECT_EQ(place.run({"add", "P.json", "/", "PLC", "--", text}),
                  done("/" + escaped(text) + "\n"));
        EXPECT_EQ(place.run({"rename", "P.json", "/PLC", "--", text + "!"}), done());
        EXPECT_EQ(place.run({"rename", "P.json", "--", "/" + escaped(text), "Q"}), done());
        EXPECT_EQ(place.run({"remove", "P.json", "/Q"}), done());
        EXPECT_EQ(place.run({"remove", "P.json", "--", "/" + escaped(text) + "!"}), done());
    }
}

TEST_F(ArgumentsTest, NeedNothingInFrontOfThem) {
    for (const auto& text : kTexts) {
        place.write("P.json", kProject);
        EXPECT_EQ(place.run({"add", "P.json", "/", "PLC", text}), done("/" + escaped(text) + "\n"));
        EXPECT_EQ(place.run({"rename", "P.json", "/PLC", text + "!"}), done());
        EXPECT_EQ(place.run({"remove", "P.json", "/" + escaped(text) + "!"}), done());
    }
    EXPECT_EQ(place.run({"add", "P.json", "/", "PLC", ""}), done("/PLC\n")) << "the class's own";
    EXPECT_EQ(place.run({"rename", "P.json", "/PLC", ""}), failed("a name must not be empty"));
}

TEST_F(ArgumentsTest, ReachThePathsOfElements) {
    for (const auto& text : kTexts) {
        const auto none = failed("the project has no element “" + text + "”");
        for (const std::string verb : {"show", "members", "map", "form", "remove"})
            EXPECT_EQ(place.run({verb, "P.json", text}), none);
        EXPECT_EQ(place.run({"set", "P.json", text, "a=b"}), none);
        EXPECT_EQ(place.run({"add", "P.json", text, "PLC"}), none);
        EXPECT_EQ(place.run({"rename", "P.json", text, "a"}), none);
    }
}

TEST_F(ArgumentsTest, ReachTheValuesOfFields) {
    for (const auto& text : kTexts) {
        EXPECT_EQ(place.run({"set", "P.json", "/PLC", "Address=" + text, "Rack number=3"}), done());
        const auto form = place.printed({"form", "P.json", "/PLC"});
        EXPECT_TRUE(form.starts_with("Address         " + text + "\n")) << form;

        if (text.find('=') != std::string::npos)
            continue;
        EXPECT_EQ(place.run({"set", "P.json", "/PLC", text}),
                  misused("“" + text + "” is not of the form LABEL=VALUE", "set"));
    }
    EXPECT_EQ(place.run({"set", "P.json", "/PLC", "[Address=1,Rack number=2]"}),
              failed("there is no field “[Address”; the fields are: Address, Rack number, Slot "
                     "number, Import DB File"));
    EXPECT_EQ(place.run({"set", "P.json", "/PLC", "Address=1", "--", "--json=2"}),
              failed("there is no field “--json”; the fields are: Address, Rack number, Slot "
                     "number, Import DB File"));
    EXPECT_EQ(place.run({"set", "P.json", "/PLC", ""}),
              misused("“” is not of the form LABEL=VALUE", "set"));
}

TEST_F(ArgumentsTest, ReachTheNamesOfFiles) {
    auto texts = kTexts;
    texts.emplace_back();
    std::erase(texts, "//"); // a folder that is there
    for (const auto& text : texts) {
        const auto none = failed(text + ": No such file or directory");
        EXPECT_EQ(place.run({"check", text}), none);
        EXPECT_EQ(place.run({"show", text}), none);
        EXPECT_TRUE(place.run({"import", text}).err.starts_with(none.err)) << text;
        EXPECT_EQ(place.run({"rename", text, "/PLC", "a"}), none);
        auto without = done("[]\n");
        without.exitCode = 1;
        without.err = "corvane: plug-in " + text + " was not loaded: " +
                      (text.empty() ? "Invalid argument" : "No such file or directory") + "\n";
        place.write("E.json", R"({"corvane": 1, "elements": []})");
        EXPECT_EQ(place.run({"--plugin", text, "check", "E.json", "--json"}), without);
        EXPECT_EQ(place.run({"check", "E.json", "--json", "--plugin=" + text}), without);
    }
}

TEST_F(ArgumentsTest, ReachTheOptionsWithValues) {
    place.write("a.db", dataBlock("Data", "x : Bool;"));
    const auto changed = [&](const std::string& project) {
        return done("Importing a.db into " + project +
                        ", /PLC, would change: 4 added, 0 updated, 0 renamed, 0 unchanged.\n"
                        "added    /PLC\nadded    /PLC/Default Command\n"
                        "added    /PLC/Data\nadded    /PLC/Data/x\n",
                    guessedNumber("a.db", "Data", 1));
    };
    auto texts = kTexts;
    texts.insert(texts.end(), kOptionLike.begin(), kOptionLike.end());
    std::erase(texts, "//"); // a folder that is there
    for (const auto& text : texts) {
        EXPECT_EQ(place.run({"import", "a.db", "--dry-run", "--project", text}), changed(text));
        EXPECT_EQ(place.run({"import", "--project=" + text, "--dry-run", "a.db"}), changed(text));
        EXPECT_EQ(place.run({"import", "a.db", "--project", "P.json", "--at", text}),
                  failed("the project has no element “" + text + "”"));
    }
    for (const std::string text : {"++", "--json", "-x", "[a,b]"}) {
        EXPECT_EQ(place.run({"import", "a.db", "--project=P.json"}).exitCode, 0);
        EXPECT_EQ(place.run({"map", "P.json", "/PLC/Data", "--output", text}), done());
        EXPECT_TRUE(place.has(text));
    }
    // An empty value is one, and does not take the next word.
    EXPECT_EQ(place.run({"import", "a.db", "--project=P.json", "--at=", "--dry-run"}),
              failed("the project has no element “”"));
}

TEST_F(ArgumentsTest, ThatAreTooManyAreNamedAsTheyAre) {
    for (const auto& text : kTexts)
        EXPECT_EQ(place.run({"check", "P.json", text}),
                  misused("The following argument was not expected: " + text, "check"));
    EXPECT_EQ(place.run({"check", "P.json", "--", "--json"}),
              misused("The following argument was not expected: --json", "check"));
}

} // namespace corvane::test
