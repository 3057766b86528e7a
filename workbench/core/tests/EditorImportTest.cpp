#include "EditorTesting.hpp"

#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <array>

namespace corvane::workbench::core::test {

namespace {

// What an import replaces, renames, appends and leaves alone, on two levels; q waits for what the
// import brings, and p refers to what it replaces.
constexpr std::string_view kRack = R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
    {"@Skill.Wiring.Box": {"name": "a", "id": "1", "children": [
        {"@Skill.Wiring.Pin": {"name": "p", "id": "1", "value": "old", "peer": "/r/a"}},
        {"@Skill.Wiring.Note": {"name": "n", "text": "stays"}}]}},
    {"@Skill.Wiring.Box": {"name": "b", "id": "2"}},
    {"@Skill.Wiring.Pin": {"name": "q", "id": "7", "value": "v", "peer": "/r/new/inner"}}]}})";

constexpr std::string_view kDocument = R"([
    {"@Skill.Wiring.Box": {"name": "b", "id": "1", "children": [
        {"@Skill.Wiring.Pin": {"name": "other", "id": "1", "value": "new"}},
        {"@Skill.Wiring.Pin": {"name": "n", "id": "2", "value": "m", "peer": "new"}}]}},
    {"@Skill.Wiring.Box": {"name": "a", "id": "2"}},
    {"@Skill.Wiring.Box": {"name": "new", "id": "3", "children": [
        {"@Skill.Wiring.Pin": {"name": "inner", "id": "4", "peer": "/r/new"}}]}}])";

class EditorImportTest : public EditorTest {};

std::vector<std::u16string> textsOf(const std::vector<MergeWarning>& warnings) {
    std::vector<std::u16string> texts;
    texts.reserve(warnings.size());
    for (const auto& warning : warnings)
        texts.push_back(textOf(warning));
    return texts;
}

} // namespace

TEST_F(EditorImportTest, TakesAnImportBackInEveryRespect) {
    auto project = load(kRack);
    const auto before = sightOf(project);
    Editor editor(project);
    Follower follower(project.model().root());
    editor.setObserver(&follower);

    const auto outcome = editor.import(project.element("/r"), std::string(kDocument));
    EXPECT_EQ(outcome.replaced, 3U);
    EXPECT_EQ(outcome.added, 3U);
    EXPECT_EQ(project.element("/r/b").childElements()[0]->name(), "p") << "pins keep their names";
    EXPECT_EQ(shown(project, "/r/b/p", u"Peer"), ui::ControlValue(std::u16string(u"/r/b")));
    EXPECT_EQ(editor.undoText(), u"Import into “r”");
    EXPECT_EQ(follower.resets, 1U);
    follower.compare();
    expectAsReloaded(project);
    EXPECT_NE(sightOf(project), before);
    expectUndoAndRedo(editor, before);
    follower.compare();
    expectAsReloaded(project);

    // Edits of what came stay possible, and the way back leads through them.
    set(editor, "/r/new/inner", u"Value", std::u16string(u"x"));
    editor.remove(std::vector{&project.element("/r/b")});
    editor.import(project.element("/r"), std::string(kDocument));
    expectAsReloaded(project);
    while (editor.canUndo())
        editor.undo();
    EXPECT_EQ(sightOf(project), before);
    while (editor.canRedo())
        editor.redo();
    expectAsReloaded(project);
    follower.compare();
}

TEST_F(EditorImportTest, ChangesNothingForADocumentThatCannotBeRead) {
    auto project = load(kRack);
    const auto before = sightOf(project);
    Editor editor(project);
    Follower follower(project.model().root());
    editor.setObserver(&follower);
    for (const std::string document :
         {R"([{"@Skill.Wiring.Box": {"name": "a", "id": "1"}}, 7])", R"([{"@Skill.No.Box": {}}])",
          R"([{"@Skill.Wiring.Note": {"name": "n", "text": "unreadable"}}])", "["}) {
        EXPECT_NE(messageOf([&] { editor.import(project.element("/r"), document); }), "");
        EXPECT_EQ(sightOf(project), before);
    }
    EXPECT_TRUE(editor.import(project.element("/r"), "[]").top.empty());
    EXPECT_FALSE(editor.canUndo());
    EXPECT_EQ(follower.historyChanges, 0U);
}

TEST_F(EditorImportTest, ExchangesNamesBackAndForth) {
    auto project = load(R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
        {"@Skill.Wiring.Box": {"name": "\u0001a", "id": "1"}},
        {"@Skill.Wiring.Box": {"name": "a", "id": "2"}}]}})");
    const auto before = sightOf(project);
    Editor editor(project);
    editor.import(project.element("/r"), R"([{"@Skill.Wiring.Box": {"name": "\u0001a", "id": "2"}},
        {"@Skill.Wiring.Box": {"name": "a", "id": "1"}}])");
    const auto children = project.element("/r").childElements();
    EXPECT_EQ(children[0]->name(), "a");
    EXPECT_EQ(children[1]->name(), "\x01\x61");
    expectUndoAndRedo(editor, before);
}

TEST_F(EditorImportTest, RefusesToMoveWhatCannotBeLoadedAnew) {
    auto project = load(R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
        {"@Skill.Wiring.Box": {"name": "a"}},
        {"@Skill.Wiring.Note": {"name": "n", "text": "unsavable"}}]}})");
    Editor editor(project);
    EXPECT_NE(messageOf([&] { move(editor, {"/r/n"}, "/r/a", 0); }), "");
    EXPECT_EQ(project.element("/r").childElements().size(), 2U);
    EXPECT_FALSE(editor.canUndo());
}

TEST_F(EditorImportTest, ImportsAFileTwiceAndTakesBothBack) {
    const auto file = folder.write("line.db", R"(DATA_BLOCK "Line"
{ S7_Optimized_Access := 'FALSE' }
VERSION : 0.1
  STRUCT
    speed : Int;
    name : String[20];
  END_STRUCT;
BEGIN
END_DATA_BLOCK
)");
    auto project = load(R"({"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "Fast"}}]}})");
    const auto before = sightOf(project);
    Editor editor(project);
    const auto import = [&] {
        auto& target = project.element("/P");
        const OpenForm form(target);
        auto document = form.importButton(".db")->press(file);
        ASSERT_TRUE(document.has_value())
            << utils::string::detail::utf16ToUtf8(document.error().text);
        editor.import(target, document->text);
    };
    import();
    EXPECT_EQ(shown(project, "/P/Line/speed", u"Effective address"),
              ui::ControlValue(std::u16string(u"DB1.DB0")));
    const auto once = sightOf(project);
    editor.add(project.element("/P"), classOf("S7.Command"), "Slow");
    editor.rename(project.element("/P/Line/speed"), "velocity");
    set(editor, "/P/Line/velocity", u"Command", std::u16string(u"/P/Slow"));
    const auto edited = sightOf(project);
    const auto step = editor.undoText();
    import();
    EXPECT_EQ(sightOf(project), edited) << "names and commands are kept";
    EXPECT_EQ(editor.undoText(), step) << "what changes nothing is no step";
    for (int i = 0; i != 3; ++i)
        editor.undo();
    EXPECT_EQ(sightOf(project), once);
    editor.undo();
    EXPECT_EQ(sightOf(project), before);
    EXPECT_FALSE(editor.isModified());
}

TEST_F(EditorImportTest, WhatChangesNothingIsNoStep) {
    auto project = load(kRack);
    Editor editor(project);
    const auto outcome = editor.import(project.element("/r"), std::string(kDocument));
    EXPECT_FALSE(outcome.counts.isNothing());
    editor.markSaved();
    const auto imported = sightOf(project);

    // What was undone can still be redone, and finds the references that it lost.
    editor.remove(std::vector{&project.element("/r/new")});
    const auto removed = sightOf(project);
    editor.undo();
    const auto again = editor.import(project.element("/r"), std::string(kDocument));
    EXPECT_EQ(again.replaced, 6U);
    EXPECT_EQ(again.counts.unchanged, 6U);
    EXPECT_EQ(again.top, outcome.top);
    EXPECT_FALSE(editor.isModified());
    EXPECT_EQ(editor.undoText(), u"Import into “r”");
    EXPECT_EQ(sightOf(project), imported);
    ASSERT_TRUE(editor.canRedo());
    editor.redo();
    EXPECT_EQ(sightOf(project), removed);
    editor.undo();
    EXPECT_EQ(sightOf(project), imported);
    expectAsReloaded(project);
}

// By path "b" is the box of that name, whatever its identity says; nothing is renamed.
TEST_F(EditorImportTest, GoesByPathsAndRemovesWhatIsMissing) {
    auto project = load(kRack);
    const auto before = sightOf(project);
    Editor editor(project);
    Follower follower(project.model().root());
    editor.setObserver(&follower);
    const auto outcome = editor.import(project.element("/r"), R"([
            {"@Skill.Wiring.Box": {"name": "a", "id": "2", "children": [
                {"@Skill.Wiring.Box": {"name": "p", "id": "1"}},
                {"@Skill.Wiring.Pin": {"name": "n", "id": "2"}}]}},
            {"@Skill.Wiring.Box": {"name": "b", "id": "2"}}])",
                                       {.match = Match::path, .removeMissing = true});
    EXPECT_EQ(
        elementsOf(project),
        R"({"@Skill.Wiring.Rack": {"name": "r", "id": "", "children": [)"
        R"({"@Skill.Wiring.Box": {"name": "a", "id": "2", "children": [)"
        R"({"@Skill.Wiring.Note": {"name": "n", "text": "stays"}},)"
        R"({"@Skill.Wiring.Box": {"name": "p", "id": "1"}},)"
        R"({"@Skill.Wiring.Pin": {"name": "n 2", "id": "2", "value": "", "peer": ""}}]}},)"
        R"({"@Skill.Wiring.Box": {"name": "b", "id": "2"}},)"
        R"({"@Skill.Wiring.Pin": {"name": "q", "id": "7", "value": "v", "peer": "/r/new/inner"}})"
        "]}}");
    EXPECT_EQ(outcome.counts.moved, 1U) << "a has another identity";
    EXPECT_EQ(outcome.counts.removed, 1U) << "the pin p";
    EXPECT_EQ(outcome.counts.added, 2U);
    EXPECT_EQ(outcome.counts.unchanged, 1U);
    expectAsReloaded(project);
    expectUndoAndRedo(editor, before);
    follower.compare();
    expectAsReloaded(project);
}

TEST_F(EditorImportTest, WhatIsReferredToAndRemovedComesBack) {
    auto project = load(R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
        {"@Skill.Wiring.Box": {"name": "a", "id": "1", "children": [
            {"@Skill.Wiring.Box": {"name": "x", "id": "2", "children": [
                {"@Skill.Wiring.Pin": {"name": "deep", "id": "3"}}]}},
            {"@Skill.Wiring.Pin": {"name": "y", "id": "4"}}]}},
        {"@Skill.Wiring.Pin": {"name": "q", "id": "7", "value": "v", "peer": "/r/a/x/deep"}}]}})");
    const auto before = sightOf(project);
    Editor editor(project);
    const std::string document =
        R"([{"@Skill.Wiring.Box": {"name": "a", "id": "1", "children": [
                {"@Skill.Wiring.Pin": {"name": "x", "id": "9"}}]}}])";

    const auto kept = editor.import(project.element("/r"), document);
    EXPECT_EQ(kept.counts.missing, 3U);
    EXPECT_EQ(kept.counts.removed, 0U);
    EXPECT_NE(project.model().findElement("/r/a/x 2"), nullptr);
    editor.undo();

    const auto result = editor.import(project.element("/r"), document, {.removeMissing = true});
    EXPECT_EQ(result.counts.missing, 0U);
    EXPECT_EQ(result.counts.removed, 3U);
    EXPECT_EQ(result.warnings.size(), 0U) << "the name was free in the end";
    EXPECT_EQ(project.element("/r/a").childElements().size(), 1U);
    EXPECT_EQ(project.element("/r/a/x").elementClass().name(), "Pin");
    EXPECT_EQ(errorsOf(project),
              std::vector<std::string>{
                  R"(/r/q: Peer: the referenced element “/r/a/x/deep” does not exist)"});
    expectAsReloaded(project);
    expectUndoAndRedo(editor, before);
}

TEST_F(EditorImportTest, APreviewSaysWhatTheImportThenDoes) {
    auto project = load(kRack);
    const auto before = sightOf(project);
    Editor editor(project);
    editor.rename(project.element("/r/q"), "s");
    editor.undo();
    Follower follower(project.model().root());
    editor.setObserver(&follower);
    for (const auto match : {Match::identity, Match::path})
        for (const bool removes : {false, true}) {
            const ImportOptions options{.match = match, .removeMissing = removes};
            auto& target = project.element("/r");
            const auto preview = editor.previewImport(target, std::string(kDocument), options);
            EXPECT_EQ(sightOf(project), before);
            EXPECT_TRUE(editor.canRedo()) << "a preview is no step";
            EXPECT_FALSE(editor.isModified());
            follower.compare();

            auto aside = load(kRack);
            const auto result =
                Editor(aside).import(aside.element("/r"), std::string(kDocument), options);
            EXPECT_EQ(preview.counts, result.counts);
            EXPECT_EQ(textsOf(preview.warnings), textsOf(result.warnings));
            for (const auto& change : preview.changes)
                EXPECT_EQ(aside.model().findElement(change.path) == nullptr,
                          change.change == ImportedElement::Change::removed)
                    << change.path;
        }
}

TEST_F(EditorImportTest, APreviewNamesTheElementsAtTheTopByTheirPlaces) {
    auto project = load(kRack);
    Editor editor(project);
    const auto preview = editor.previewImport(project.element("/r"), std::string(kDocument));
    std::vector<std::string> tops;
    for (const auto& change : preview.changes)
        if (change.position)
            tops.push_back(std::to_string(*change.position) + change.path);
    EXPECT_EQ(tops, (std::vector<std::string>{"2/r/new", "0/r/b", "1/r/a"}));
}

TEST_F(EditorImportTest, WhatIsCorrectedComesInAsIfTheDocumentSaidIt) {
    const std::string_view plc = R"({"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "c"}},
        {"@Skill.S7.DataBlock": {"name": "old", "DBNumber": 1}}]}})";
    const auto blockWith = [](const std::string& number) {
        return R"([{"@Skill.S7.DataBlock": {"name": "new", "DBNumber": )" + number +
               R"(, "children": [{"@Skill.S7.Struct": {"name": "s", "children": [
                {"@Skill.S7.Item": {"name": "i", "dataType": "Int", "address": "DB0",
                                    "command": "/P/c"}}]}}]}}])";
    };
    for (const std::uint64_t number : {7U, 1U}) {
        auto project = load(plc);
        Editor editor(project);
        const std::vector<ImportCorrection> corrections{
            {.position = 0, .field = {.key = "dbNumber", .value = number}}};
        auto& target = project.element("/P");
        const auto preview = editor.previewImport(target, blockWith("2"), {}, corrections);
        const auto result = editor.import(target, blockWith("2"), {}, corrections);
        auto stated = load(plc);
        Editor(stated).import(stated.element("/P"), blockWith(std::to_string(number)));
        EXPECT_EQ(sightOf(project), sightOf(stated)) << number;
        EXPECT_EQ(preview.counts, result.counts);
        EXPECT_EQ(result.counts.renamed, number == 1 ? 1U : 0U) << "the number is the block's";
        EXPECT_EQ(shown(project, "/P/new/s/i", u"Effective address"),
                  ui::ControlValue(number == 1 ? std::u16string(u"DB1.DB0") : u"DB7.DB0"));
        expectAsReloaded(project);
    }

    auto project = load(plc);
    const auto before = sightOf(project);
    Editor editor(project);
    const auto refusal = [&](const ImportCorrection& correction) {
        return messageOf([&] {
            editor.import(project.element("/P"), blockWith("2"), {}, std::array{correction});
        });
    };
    const ui::ControlValue tooLarge(std::uint64_t{65536});
    EXPECT_NE(refusal({.position = 0, .field = {.key = "dbNumber", .value = tooLarge}}), "");
    EXPECT_NE(refusal({.position = 0, .field = {.key = "none", .value = tooLarge}}), "");
    EXPECT_EQ(refusal({.position = 1, .field = {.key = "dbNumber", .value = tooLarge}}),
              "the document has no such element");
    EXPECT_EQ(sightOf(project), before);
}

// The block gets another number, and what the file no longer has stays below it: its address must
// not stay that in another block.
TEST_F(EditorImportTest, WhatStaysBelowAnElementThatIsMovedGoesWithIt) {
    auto project = load(R"({"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "c"}},
        {"@Skill.S7.DataBlock": {"name": "B", "DBNumber": 1, "children": [
            {"@Skill.S7.Item": {"name": "i", "dataType": "Int", "address": "DB0",
                                "command": "/P/c"}},
            {"@Skill.S7.Struct": {"name": "s", "children": [
                {"@Skill.S7.Item": {"name": "j", "dataType": "Int", "address": "DB2",
                                    "command": "/P/c"}},
                {"@Skill.S7.Item": {"name": "stays", "dataType": "Int", "address": "DB4",
                                    "command": "/P/c"}}]}},
            {"@Skill.S7.Struct": {"name": "gone", "children": [
                {"@Skill.S7.Item": {"name": "k", "dataType": "Int", "address": "DB6",
                                    "command": "/P/c"}}]}}]}}]}})");
    const auto before = sightOf(project);
    const std::vector<std::pair<const char*, std::u16string>> addresses{{"/P/B/i", u".DB0"},
                                                                        {"/P/B/s/j", u".DB2"},
                                                                        {"/P/B/s/stays", u".DB4"},
                                                                        {"/P/B/gone/k", u".DB6"}};
    const auto expectAddresses = [&](const std::u16string& block) {
        for (const auto& [path, address] : addresses)
            EXPECT_EQ(shown(project, path, u"Effective address"), ui::ControlValue(block + address))
                << path;
    };
    Editor editor(project);
    editor.import(project.element("/P"), R"([{"@Skill.S7.DataBlock": {"name": "B", "DBNumber": 7,
        "children": [
            {"@Skill.S7.Item": {"name": "i", "dataType": "Int", "address": "DB0"}},
            {"@Skill.S7.Struct": {"name": "s", "children": [
                {"@Skill.S7.Item": {"name": "j", "dataType": "Int", "address": "DB2"}}]}}]}}])",
                  {.match = Match::path, .removeMissing = false});
    expectAddresses(u"DB7");
    expectAsReloaded(project);
    editor.undo();
    expectAddresses(u"DB1");
    editor.redo();
    expectAddresses(u"DB7");
    expectUndoAndRedo(editor, before);
    expectAsReloaded(project);
}

TEST_F(EditorImportTest, APreviewCanBeStoppedAtEachPart) {
    auto project = load(kRack);
    const auto before = sightOf(project);
    Editor editor(project);
    for (std::size_t last = 0; last != 3; ++last) {
        std::vector<std::size_t> told;
        editor.setProgress([&](std::size_t done, std::size_t) {
            told.push_back(done);
            return done != last;
        });
        EXPECT_THROW(
            static_cast<void>(editor.previewImport(project.element("/r"), std::string(kDocument))),
            EditStopped);
        EXPECT_EQ(told.size(), last + 1);
        EXPECT_EQ(sightOf(project), before);
    }
}

// A second view of what an import meets again is the user's, and no remainder of an import.
TEST_F(EditorImportTest, ASecondViewIsNotMissing) {
    const std::string_view rack = R"({"@Skill.Wiring.Rack": {"name": "r", "children": [
        {"@Skill.Wiring.Box": {"name": "a", "id": "1", "children": [
            {"@Skill.Wiring.Pin": {"name": "x", "id": "2"}},
            {"@Skill.Wiring.Pin": {"name": "mine", "id": "2"}},
            {"@Skill.Wiring.Note": {"name": "n", "text": "t"}}]}}]}})";
    const std::string document = R"([{"@Skill.Wiring.Box": {"name": "a", "id": "1", "children": [
        {"@Skill.Wiring.Pin": {"name": "x", "id": "2"}}]}}])";
    auto project = load(rack);
    Editor editor(project);
    const auto byIdentity = editor.import(project.element("/r"), document, {.removeMissing = true});
    EXPECT_TRUE(byIdentity.counts.isNothing());
    EXPECT_EQ(byIdentity.counts.missing, 0U);
    const auto byPath = editor.import(project.element("/r"), document,
                                      {.match = Match::path, .removeMissing = true});
    EXPECT_EQ(byPath.counts.removed, 1U);
    EXPECT_EQ(project.model().findElement("/r/a/mine"), nullptr);
    EXPECT_NE(project.model().findElement("/r/a/n"), nullptr) << "what has no identity stays";
}

} // namespace corvane::workbench::core::test
