#include "CoreTesting.hpp"

#include "workbench/core/import/ImportWarnings.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <array>
#include <random>

namespace corvane::workbench::core::test {

namespace {

class ProjectImportTest : public ProjectTest {
protected:
    /// Presses an element's button for the file's extension and imports what it gives.
    static ImportOutcome importFile(Project& project, std::string_view target,
                                    const std::filesystem::path& file) {
        auto& element = project.element(target);
        const OpenForm form(element);
        auto* const button = form.importButton(file.extension().string());
        EXPECT_NE(button, nullptr);
        auto document = button->press(file);
        EXPECT_TRUE(document.has_value());
        return importDocument(project, element, std::move(document->text));
    }

    /// Expects a project to be what saving it and loading it again gives.
    void expectToBeAsReloaded(const Project& project) const {
        const auto again = reloaded(project);
        EXPECT_EQ(elementsOf(again), elementsOf(project));
        EXPECT_EQ(errorsOf(again), errorsOf(project));
        EXPECT_EQ(detailsOf(again.model().root()), detailsOf(project.model().root()));
    }

private:
    /// All that forms show of the elements below `parent`, derived values among it.
    static std::vector<ui::ControlValue> detailsOf(const model::Element& parent) {
        std::vector<ui::ControlValue> details;
        for (const auto& child : parent.childElements()) {
            const OpenForm form(*child);
            for (const auto* const control : form.controls()) {
                details.push_back(control->value());
                details.emplace_back(control->isVisible());
            }
            const auto below = detailsOf(*child);
            details.insert(details.end(), below.begin(), below.end());
        }
        return details;
    }
};

constexpr std::string_view kWiring = R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
    {"@Skill.Wiring.Box": {"name": "b", "id": "1", "children": [
        {"@Skill.Wiring.Pin": {"name": "p", "id": "1", "value": "v", "peer": "/r/later"}}]}},
    {"@Skill.Wiring.Pin": {"name": "q", "id": "2", "peer": "/r/b"}}]}})";

} // namespace

TEST_F(ProjectImportTest, ChangesNothingWhenADocumentFailsHalfWay) {
    // The beginning is good, would replace and rename, and brings what is waited for.
    const std::string good = R"({"@Skill.Wiring.Box": {"name": "renamed", "id": "1", "children": [
            {"@Skill.Wiring.Pin": {"name": "n", "id": "1", "value": "new", "peer": "later"}}]}},
        {"@Skill.Wiring.Box": {"name": "later", "id": "9"}})";
    const std::vector<std::pair<std::string, std::string>> documents{
        {"[" + good, "malformed JSON: unexpected end of the text (line 3, column 60)"},
        {"[" + good + "] ,",
         "malformed JSON: unexpected text behind the outermost value (line 3, column 62)"},
        {R"({"elements": []})", "expected an array, found an object (line 1, column 1)"},
        {"[" + good + ", 3]", "expected an object, found a number (line 3, column 62)"},
        {"[" + good + R"(, {"@Skill.Wiring.Shelf": {"name": "s"}}])",
         R"(no loaded plug-in has the element class “@Skill.Wiring.Shelf”)"},
        {"[" + good + R"(, {"@Skill.Wiring.Rack": {"name": "s"}}])",
         R"(member "@Skill.Wiring.Rack": an element of this class cannot stand here )"
         "(line 3, column 62)"},
        {"[" + good + R"(, {"@Skill.Wiring.Pin": {"name": "s", "volume": 1}}])",
         R"(element “/r/s”: unknown member “volume”)"},
        {"[" + good + R"(, {"@Skill.Wiring.Box": {"name": "s", "children": [
            {"@Skill.Wiring.Note": {"name": "t", "text": "unreadable"}}]}}])",
         R"(element “/r/s/t”: the note cannot be read)"},
    };
    for (const auto& [document, message] : documents) {
        auto project = load(kWiring);
        const auto elements = elementsOf(project);
        const auto errors = errorsOf(project);
        EXPECT_EQ(errors.size(), 1U);
        EXPECT_EQ(messageOf([&] { importDocument(project, project.element("/r"), document); }),
                  message);
        EXPECT_EQ(elementsOf(project), elements);
        EXPECT_EQ(errorsOf(project), errors);

        // Nor is anything left that would disturb the next import.
        importDocument(project, project.element("/r"), "[" + good + "]");
        EXPECT_EQ(errorsOf(project), std::vector<std::string>{});
        expectToBeAsReloaded(project);
    }
}

// A file may declare a variable without a name. A project file holds none: its elements have been
// given names.
TEST_F(ProjectImportTest, GivesANameToWhatHasNone) {
    auto project = load(kWiring);
    const std::string_view document =
        R"([{"@Skill.Wiring.Pin": {"name": "", "id": "7", "peer": "named"}},
            {"@Skill.Wiring.Box": {"name": "named", "id": "8", "children": [
                {"@Skill.Wiring.Pin": {"name": "", "id": "1", "value": "deep"}},
                {"@Skill.Wiring.Note": {"name": ""}}]}}])";
    importDocument(project, project.element("/r"), std::string(document));
    for (const auto* const path : {"/r/Unnamed", "/r/named/Unnamed", "/r/named/Unnamed 2"})
        EXPECT_NE(project.model().findElement(path), nullptr) << path;
    expectToBeAsReloaded(project);

    const auto outcome = importDocument(project, project.element("/r"), std::string(document));
    EXPECT_EQ(outcome.replaced, 3U);
    EXPECT_EQ(outcome.top.front()->path(), "/r/Unnamed");
}

TEST(ImportExtension, IsWhatStandsBehindTheLastDot) {
    const std::vector<std::pair<std::string, std::string>> cases{
        {"a.db", ".db"},
        {"A.DB", ".db"},
        {"/p.x/a.Db", ".db"},
        {"a.tar.gz", ".gz"},
        {"a", ""},
        {"/p.x/a", ""},
        {"", ""},
        {"a.", "."},
        {".db", ".db"},
        {"a.\u00c4", ".\u00c4"},
    };
    for (const auto& [file, extension] : cases)
        EXPECT_EQ(importExtensionOf(file), extension) << file;
}

TEST_F(ProjectImportTest, IsWhatLoadingAgainGives) {
    auto project = load(R"({"@Skill.S7.PLC": {"name": "a~/b", "address": "x", "children": [
        {"@Skill.S7.Command": {"name": "Fast"}},
        {"@Skill.S7.DataBlock": {"name": "DB7", "DBNumber": 3, "children": [
            {"@Skill.S7.Item": {"name": "old", "dataType": "Int", "address": "DB0"}},
            {"@Skill.S7.Item": {"name": "wrong", "address": "MB1", "command": "/a~0~1b/Slow"}},
            {"@Skill.S7.Struct": {"name": "st", "children": [
                {"@Skill.S7.Item": {"name": "x", "dataType": "Bool", "address": "DB2.0",
                                    "command": "/a~0~1b/Fast"}}]}}]}},
        {"@Skill.S7.DataBlock": {"name": "Data", "DBNumber": 7, "children": [
            {"@Skill.S7.Item": {"name": "seven", "dataType": "Byte", "address": "DB0",
                                "command": "/a~0~1b/Fast"}}]}},
        {"@Skill.S7.Item": {"name": "Standalone", "address": "DB1", "command": ""}}]}})");
    const std::string_view header = "{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n";
    const auto block = [&](std::string_view name, std::string_view body) {
        return "DATA_BLOCK " + std::string(name) + "\n" + std::string(header) + std::string(body) +
               "END_STRUCT;\nEND_DATA_BLOCK\n";
    };
    // The number of a block is taken over by another, and variables move through one another.
    const auto first = folder.write(
        "first.db", block("DB7", "a : Byte; b : Byte; st : Struct x : Bool; y : Int; END_STRUCT;") +
                        block("Data", "seven : Int; s : String[3];") + block("New", "n : Real;"));
    const auto second = folder.write(
        "second.db", block("Data", "b : Word; seven : Int; s : WString;") +
                         block("DB7", "b : Byte; a : Byte; st : Struct y : Int; END_STRUCT;") +
                         block("DB3", "old : Int;"));
    for (const auto& file : {first, first, second, first, second, second}) {
        importFile(project, "/a~0~1b", file);
        expectToBeAsReloaded(project);
    }
}

/// Writes random elements: few names and identities, so that they collide in every way.
class RandomElements {
public:
    explicit RandomElements(unsigned seed) : random_(seed) {}

    /// Whatever can stand in a document.
    std::string any() { return list(kDepth, false); }

    /// Only elements that differ from their siblings in their identities.
    std::string distinct() { return list(kDepth, true); }

private:
    static constexpr unsigned kDepth = 3;

    unsigned below(std::size_t bound) { return static_cast<unsigned>(random_() % bound); }

    std::string_view name() {
        constexpr std::array<std::string_view, 6> kNames{"a", "b", "c", "a 2", "b 2", "a/~"};
        return kNames[below(kNames.size())];
    }

    std::string_view peer() {
        constexpr std::array<std::string_view, 7> kPeers{"",     "/r/a",   "/r/b", "a",
                                                         "/r/c", "/r/a/b", "a~1~0"};
        return kPeers[below(kPeers.size())];
    }

    std::string list(unsigned depth, bool distinct) {
        constexpr unsigned kIdentities = 5;
        std::string text;
        const auto first = below(kIdentities);
        for (unsigned i = below(kIdentities); i != 0; --i) {
            const auto id = distinct ? (first + i) % kIdentities : below(kIdentities);
            text += (text.empty() ? "" : ",") + element(depth, distinct, id);
        }
        return text;
    }

    std::string element(unsigned depth, bool distinct, unsigned id) {
        const auto kind = below(distinct ? 4 : 5);
        auto head = R"("name": ")" + std::string(name()) + "\"";
        if (kind == 4)
            return R"({"@Skill.Wiring.Note": {)" + head + "}}";
        head += R"(, "id": ")" + std::to_string(id) + "\"";
        if (kind < 2 || depth == 0)
            return R"({"@Skill.Wiring.Pin": {)" + head + R"(, "value": ")" +
                   std::to_string(below(100)) + R"(", "peer": ")" + std::string(peer()) + "\"}}";
        return R"({"@Skill.Wiring.Box": {)" + head + R"(, "children": [)" +
               list(depth - 1, distinct) + "]}}";
    }

    std::mt19937 random_;
};

TEST_F(ProjectImportTest, IsWhatLoadingAgainGivesWhateverIsImported) {
    for (unsigned seed = 0; seed != 300; ++seed) {
        SCOPED_TRACE(seed);
        RandomElements elements(seed);
        auto project =
            load(R"({"@Skill.Wiring.Rack": {"name": "r", "children": [)" + elements.any() + "]}}");
        for (int imports = 0; imports != 3; ++imports) {
            importDocument(project, project.element("/r"), "[" + elements.any() + "]");
            expectToBeAsReloaded(project);
        }
        // What has an identity of its own is found again: importing it once more changes nothing.
        const auto document = "[" + elements.distinct() + "]";
        importDocument(project, project.element("/r"), document);
        const auto once = elementsOf(project);
        const auto outcome = importDocument(project, project.element("/r"), document);
        EXPECT_EQ(elementsOf(project), once) << document;
        EXPECT_EQ(outcome.added, 0U);
        if (HasFailure())
            return;
    }
}

TEST_F(ProjectImportTest, FindsTheElementsThatImportAFile) {
    auto project = load(R"({"@Skill.Wiring.Rack": {"name": "r"}},
        {"@Skill.S7.PLC": {"name": "p", "children": [{"@Skill.S7.Command": {"name": "c"}}]}},
        {"@Skill.S7.PLC": {"name": "q"}})");
    const auto pathsOf = [](const std::vector<model::Element*>& elements) {
        std::vector<std::string> paths;
        paths.reserve(elements.size());
        for (const auto* const element : elements)
            paths.push_back(element->path());
        return paths;
    };
    using Paths = std::vector<std::string>;
    EXPECT_EQ(pathsOf(importTargets(project, ".db")), (Paths{"/p", "/q"}));
    EXPECT_EQ(pathsOf(importTargets(project, ".wiring")), (Paths{"/r"}));
    EXPECT_EQ(pathsOf(importTargets(project, ".txt")), Paths{});
}

TEST_F(ProjectImportTest, MakesAnElementThatImportsAFile) {
    Project project(plugins);
    const auto* const first = addImportTarget(project, ".db");
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->path(), "/PLC");
    const auto* const second = addImportTarget(project, ".wiring");
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(second->path(), "/Rack");
    EXPECT_EQ(addImportTarget(project, ".txt"), nullptr);
    EXPECT_EQ(project.model().root().childElements().size(), 2U);
}

TEST_F(ProjectImportTest, AWarningIsReadWithItsPlaceAndItsElement) {
    EXPECT_EQ(
        textOf({.text = u"is odd", .line = 3, .column = 1, .element = "a~1\u00E4/b"}, "\u00FC.db"),
        u"\u00FC.db:3:1: a~1\u00E4/b: is odd");
    EXPECT_EQ(textOf({.text = u"is odd", .line = 3, .column = 1, .element = {}}, "x.db"),
              u"x.db:3:1: is odd");
    EXPECT_EQ(textOf({.text = u"is odd", .element = "a"}, "x.db"), u"a: is odd");
    EXPECT_EQ(textOf({.text = u"is odd", .element = {}}, "x.db"), u"is odd");
    EXPECT_EQ(textOf(MergeWarning{.kind = MergeWarning::Kind::takenNames,
                                  .element = "/a~1\u00E4/b",
                                  .text = u"is odd"}),
              u"/a~1\u00E4/b: is odd");
}

} // namespace corvane::workbench::core::test
