#include "EditorTesting.hpp"

#include <array>

namespace corvane::workbench::core::test {

namespace {

using Text = std::u16string;
using Elements = std::vector<model::Element*>;

constexpr std::string_view kPlant = R"(
    {"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "C"}},
        {"@Skill.S7.DataBlock": {"name": "A", "DBNumber": 1, "children": [
            {"@Skill.S7.Item": {"name": "x", "address": "DBW0", "command": "/P/C"}},
            {"@Skill.S7.Item": {"name": "y", "address": "DBW2", "command": "/P/later"}},
            {"@Skill.S7.Struct": {"name": "S", "children": [
                {"@Skill.S7.Item": {"name": "z", "address": "DBW4", "command": "/P/C"}}]}}]}},
        {"@Skill.S7.DataBlock": {"name": "B", "DBNumber": 2, "children": [
            {"@Skill.S7.Item": {"name": "x", "address": "DBW0", "command": "/P/C"}}]}}]}},
    {"@Skill.S7.PLC": {"name": "Q", "address": "h", "children": [
        {"@Skill.S7.Command": {"name": "C"}}]}})";

class EditorTreeTest : public EditorTest {
public:
    EditorTreeTest() : project(load(kPlant)), editor(project), follower(project.model().root()) {
        editor.setObserver(&follower);
        before = sightOf(project);
    }

    /// Checks what holds after every edit: views have followed, saving loses nothing, and the step
    /// can be taken back and made again.
    void check() const {
        follower.compare();
        expectAsReloaded(project);
        expectUndoAndRedo(const_cast<Editor&>(editor), before);
        follower.compare();
    }

    Elements at(std::initializer_list<std::string_view> paths) const {
        Elements elements;
        for (const auto path : paths)
            elements.push_back(&project.element(path));
        return elements;
    }

    Text effectiveAddress(std::string_view path) const {
        return std::get<Text>(shown(project, path, u"Effective address"));
    }

    Project project;
    Editor editor;
    Follower follower;
    Sight before;
};

} // namespace

TEST_F(EditorTreeTest, AddsAnElementInItsDefaultState) {
    auto& item = editor.add(project.element("/P/B"), classOf("S7.Item"));
    EXPECT_EQ(item.path(), "/P/B/Item");
    EXPECT_EQ(effectiveAddress("/P/B/Item"), u"DB2.");
    EXPECT_EQ(editor.undoText(), u"Add Data Item");
    check();
    EXPECT_EQ(editor.add(project.element("/P/B"), classOf("S7.Item"), "x").path(), "/P/B/x 2");
    EXPECT_EQ(&project.element("/P/B/Item"), &item) << "the same element, undone and redone";
}

TEST_F(EditorTreeTest, FindsWhatWasMissingAndLosesItAgain) {
    EXPECT_NE(errorsOf(project).size(), 0U);
    editor.add(project.element("/P"), classOf("S7.Command"), "later");
    EXPECT_EQ(errorsOf(project), std::vector<std::string>());
    check();
    editor.undo();
    editor.rename(project.element("/P/C"), "later"); // y finds it, x and z follow it
    EXPECT_EQ(errorsOf(project), std::vector<std::string>());
    check();
    editor.undo();
    EXPECT_EQ(sightOf(project), before);
}

TEST_F(EditorTreeTest, KeepsReferencesApartThatMetForAWhile) {
    // y waits for "/P/later" while x refers to C. For a moment both refer to one element.
    editor.rename(project.element("/P/C"), "later");
    set(editor, "/P/A/x", u"Command", Text());
    set(editor, "/P/A/x", u"Command", Text(u"/P/later"));
    editor.undo();
    editor.undo();
    editor.undo();
    EXPECT_EQ(sightOf(project), before);
    expectAsReloaded(project);
    for (int i = 0; i != 3; ++i)
        editor.redo();
    expectAsReloaded(project);
    editor.rename(project.element("/P/later"), "C");
    EXPECT_EQ(shown(project, "/P/A/y", u"Command"), ui::ControlValue(Text(u"/P/C")));
}

TEST_F(EditorTreeTest, RefusesToAddWhatIsNotAccepted) {
    EXPECT_EQ(messageOf([&] { editor.add(project.element("/P/A"), classOf("S7.Command")); }),
              "an element of the class “Command” cannot stand below “/P/A”");
    EXPECT_EQ(messageOf([&] { editor.add(project.model().root(), classOf("S7.Item")); }),
              "an element of the class “Item” cannot stand at the top of a project");
    EXPECT_EQ(messageOf([&] { editor.add(project.element("/P"), classOf("S7.Item"), "\xff"); }),
              "the name “\uFFFD” is not valid UTF-8");
    EXPECT_EQ(sightOf(project), before);
    EXPECT_FALSE(editor.isModified());
}

TEST_F(EditorTreeTest, Renames) {
    editor.rename(project.element("/P"), "a/b~c");
    EXPECT_EQ(shown(project, "/a~1b~0c/A/x", u"Command"), ui::ControlValue(Text(u"/a~1b~0c/C")));
    EXPECT_EQ(editor.undoText(), u"Rename “P”");
    check();
}

TEST_F(EditorTreeTest, RefusesNamesThatAreNone) {
    auto& element = project.element("/P/A");
    EXPECT_EQ(messageOf([&] { editor.rename(element, ""); }), "a name must not be empty");
    EXPECT_EQ(messageOf([&] { editor.rename(element, "B"); }),
              "there is another element “B” beside it");
    EXPECT_EQ(messageOf([&] { editor.rename(project.element("/P"), "Q"); }),
              "there is another element “Q” beside it");
    editor.rename(element, "A");
    EXPECT_EQ(sightOf(project), before);
    EXPECT_FALSE(editor.canUndo());
}

TEST_F(EditorTreeTest, SaysWhoLosesByARemoval) {
    const auto losses = editor.remove(at({"/P/C"}));
    ASSERT_EQ(losses.size(), 3U);
    const std::array holders{"/P/A/x", "/P/A/S/z", "/P/B/x"};
    for (std::size_t i = 0; i != holders.size(); ++i) {
        EXPECT_EQ(losses[i].holder->path(), holders[i]);
        EXPECT_EQ(losses[i].text, "/P/C");
    }
    EXPECT_EQ(errorsOf(project).size(), 4U);
    check();
}

TEST_F(EditorTreeTest, RemovesWhatIsSelectedOnceWhateverTheSelection) {
    // One stands below another, one is named twice, and the parents differ.
    const auto losses =
        editor.remove(at({"/P/A/S/z", "/P/B/x", "/P/A/S", "/P/C", "/P/B/x", "/P/A/x"}));
    EXPECT_EQ(losses.size(), 0U) << "those that referred to the command are gone, too";
    EXPECT_EQ(project.element("/P/A").childElements().size(), 1U);
    EXPECT_EQ(project.element("/P/B").childElements().size(), 0U);
    EXPECT_EQ(editor.undoText(), u"Remove 4 elements");
    check();
}

TEST_F(EditorTreeTest, LoadsAnItemAnewInAnotherBlock) {
    move(editor, {"/P/A/x"}, "/P/B", 0);
    EXPECT_EQ(project.element("/P/B").childElements().front()->name(), "x 2");
    EXPECT_EQ(effectiveAddress("/P/B/x 2"), u"DB2.DBW0");
    EXPECT_EQ(editor.undoText(), u"Move “x”");
    check();
    set(editor, "/P/B", u"DB number", std::uint64_t{9});
    EXPECT_EQ(effectiveAddress("/P/B/x 2"), u"DB9.DBW0");
    set(editor, "/P/A", u"DB number", std::uint64_t{8});
    EXPECT_EQ(effectiveAddress("/P/B/x 2"), u"DB9.DBW0");
}

TEST_F(EditorTreeTest, TakesAnItemOutOfItsBlock) {
    move(editor, {"/P/A/S", "/P/A/x"}, "/P", 1);
    EXPECT_EQ(effectiveAddress("/P/x"), u"");
    EXPECT_EQ(effectiveAddress("/P/S/z"), u"");
    EXPECT_EQ(project.element("/P").childElements()[1]->name(), "S") << "in the selection's order";
    EXPECT_EQ(project.element("/P").childElements()[2]->name(), "x");
    check();
    EXPECT_NE(errorsOf(project), before.problems) << "DBW0 is no address of a standalone item";
}

TEST_F(EditorTreeTest, JudgesCommandsAgainWhereTheyHaveMoved) {
    move(editor, {"/P/A"}, "/Q", 0);
    EXPECT_EQ(errorsOf(project).size(), 3U) << "the commands of all three stand elsewhere now";
    check();
    before = sightOf(project);
    move(editor, {"/P/C"}, "/Q", 9);
    EXPECT_EQ(shown(project, "/Q/A/x", u"Command"), ui::ControlValue(Text(u"/Q/C 2")));
    EXPECT_EQ(errorsOf(project).size(), 2U) << "what waits for /P/later, and /P/B/x";
    check();
}

TEST_F(EditorTreeTest, MovesABlockTogetherWithItsCommand) {
    move(editor, {"/P/C", "/P/A/S", "/P/A", "/P/A/x"}, "/Q", 0);
    EXPECT_EQ(project.element("/Q/A").childElements().size(), 3U) << "the block with all it has";
    EXPECT_EQ(effectiveAddress("/Q/A/S/z"), u"DB1.DBW4");
    check();
}

TEST_F(EditorTreeTest, ChangesTheOrder) {
    move(editor, {"/P/A/S", "/P/A/x"}, "/P/A", 1);
    const auto children = project.element("/P/A").childElements();
    EXPECT_EQ(children[0]->name(), "S");
    EXPECT_EQ(children[1]->name(), "x");
    EXPECT_EQ(children[2]->name(), "y");
    check();
    move(editor, {"/Q"}, "/", 0);
    EXPECT_EQ(project.model().root().childElements()[0]->name(), "Q");
}

TEST_F(EditorTreeTest, TakesAMoveToTheSamePlaceForNone) {
    move(editor, {"/P/A/x"}, "/P/A", 0);
    move(editor, {"/P/A/x"}, "/P/A", 1);
    move(editor, {"/P/A/x", "/P/A/y"}, "/P/A", 2);
    move(editor, {"/P/A/S"}, "/P/A", 99);
    EXPECT_FALSE(editor.canUndo());
    EXPECT_EQ(sightOf(project), before);
}

TEST_F(EditorTreeTest, RefusesMovesThatAreNotAccepted) {
    struct Case {
        std::string_view element;
        std::string_view parent;
    };
    const std::array cases{Case{"/P/C", "/P/A"},   Case{"/P", "/Q"},
                           Case{"/P/A", "/P/A"},   Case{"/P/A/S", "/P/A/S"},
                           Case{"/P/A", "/P/A/S"}, Case{"/P/A/x", "/P/C"}};
    for (const auto& [element, parent] : cases) {
        EXPECT_FALSE(editor.canMove(at({element}), project.element(parent)));
        EXPECT_NE(messageOf([&] { editor.move(at({element}), project.element(parent), 0); }), "");
    }
    EXPECT_FALSE(editor.canMove(at({"/P/A/x"}), project.model().root()));
    EXPECT_TRUE(editor.canMove(at({"/P/A/x"}), project.element("/Q")));
    EXPECT_EQ(sightOf(project), before);
}

TEST_F(EditorTreeTest, RefusesTheProjectItself) {
    const Elements root{&project.model().root()};
    EXPECT_NE(messageOf([&] { editor.rename(*root.front(), "x"); }), "");
    EXPECT_NE(messageOf([&] { static_cast<void>(editor.remove(root)); }), "");
    EXPECT_NE(messageOf([&] { editor.move(root, project.element("/P"), 0); }), "");
    EXPECT_NE(messageOf([&] { editor.setValue(root, {"address", Text()}); }), "");
    EXPECT_FALSE(editor.canUndo());
}

TEST_F(EditorTreeTest, KnowsWhenTheProjectIsModified) {
    EXPECT_FALSE(editor.isModified());
    editor.rename(project.element("/Q"), "R");
    EXPECT_TRUE(editor.isModified());
    editor.undo();
    EXPECT_FALSE(editor.isModified());
    editor.redo();
    editor.markSaved();
    EXPECT_FALSE(editor.isModified());
    editor.undo();
    EXPECT_TRUE(editor.isModified());
    editor.rename(project.element("/Q"), "T"); // the saved state cannot be reached any more
    EXPECT_FALSE(editor.canRedo());
    EXPECT_TRUE(editor.isModified());
    editor.undo();
    EXPECT_TRUE(editor.isModified());
    editor.undo(); // nothing is left
    EXPECT_EQ(editor.undoText(), u"");
    EXPECT_EQ(editor.redoText(), u"Rename “Q”");
}

TEST_F(EditorTreeTest, RemovesManyScatteredSiblings) {
    auto& block = project.element("/P/B");
    constexpr std::size_t kCount = 2000;
    for (std::size_t i = 0; i != kCount; ++i)
        editor.add(block, classOf("S7.Item"), "many");
    before = sightOf(project);
    Elements odd;
    for (std::size_t i = 1; i < kCount; i += 2)
        odd.push_back(block.childElements()[i].get());
    const auto resets = follower.resets;
    editor.remove(odd);
    EXPECT_EQ(block.childElements().size(), 1 + kCount / 2);
    EXPECT_EQ(follower.resets, resets + 1) << "a thousand runs are told at once";
    follower.compare();
    expectUndoAndRedo(editor, before);
    follower.compare();
}

TEST_F(EditorTreeTest, DuplicatesElementsWithAllBelowThem) {
    const auto copies = editor.duplicate(at({"/P/A", "/P/A/x", "/P/B"}));
    ASSERT_EQ(copies.size(), 2U);
    EXPECT_EQ(copies[0]->path(), "/P/A 2");
    EXPECT_EQ(copies[1]->path(), "/P/B 2");
    EXPECT_EQ(project.element("/P").childElements()[2].get(), copies[0]);
    EXPECT_EQ(effectiveAddress("/P/A 2/S/z"), u"DB1.DBW4");
    EXPECT_EQ(shown(project, "/P/A 2/x", u"Command"), ui::ControlValue(Text(u"/P/C")));
    EXPECT_EQ(shown(project, "/P/A 2/y", u"Command"), ui::ControlValue(Text(u"/P/later")));
    EXPECT_EQ(editor.undoText(), u"Duplicate 2 elements");
    check();
}

TEST_F(EditorTreeTest, LeadsReferencesAmongCopiesToCopies) {
    editor.duplicate(at({"/P"}));
    EXPECT_EQ(shown(project, "/P 2/A/S/z", u"Command"), ui::ControlValue(Text(u"/P 2/C")));
    EXPECT_EQ(shown(project, "/P/A/S/z", u"Command"), ui::ControlValue(Text(u"/P/C")));
    EXPECT_EQ(editor.undoText(), u"Duplicate “P”");
    check();
    editor.remove(at({"/P/C"}));
    EXPECT_EQ(shown(project, "/P 2/A/x", u"Command"), ui::ControlValue(Text(u"/P 2/C")));
}

TEST_F(EditorTreeTest, ACopyFollowsItsOwnBlock) {
    editor.duplicate(at({"/P/A"}));
    set(editor, "/P/A 2", u"DB number", std::uint64_t{9});
    EXPECT_EQ(effectiveAddress("/P/A 2/S/z"), u"DB9.DBW4");
    EXPECT_EQ(effectiveAddress("/P/A/S/z"), u"DB1.DBW4");
}

} // namespace corvane::workbench::core::test
