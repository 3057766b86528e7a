#include "EditorTesting.hpp"

#include "workbench/core/edit/workspace/Fields.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <algorithm>
#include <array>

namespace corvane::workbench::core::test {

namespace {

using Text = std::u16string;

// What a document can hold and no user could enter: a rack of 200, a data type that is not offered,
// an address with a block's number in front, a command that does not exist.
constexpr std::string_view kPlant = R"(
    {"@Skill.S7.PLC": {"name": "P", "address": "h", "rack": 200, "slot": 0, "children": [
        {"@Skill.S7.Command": {"name": "C"}},
        {"@Skill.S7.Command": {"name": "D"}},
        {"@Skill.S7.DataBlock": {"name": "B", "DBNumber": 0, "children": [
            {"@Skill.S7.Item": {"name": "odd", "dataType": "Quad", "address": "DB9.DB8.DB1",
                "writable": true, "command": "/P/gone"}},
            {"@Skill.S7.Struct": {"name": "S", "children": [
                {"@Skill.S7.Item": {"name": "text", "dataType": "String", "stringSize": 300,
                    "address": "DBB4", "writable": false, "command": "/P/C"}}]}}]}}]}})";

/// A language in which the rack's number and the slot's are called the same.
class OneLabel {
public:
    OneLabel() {
        i18n::setTranslator([](std::string_view, std::string_view text) {
            return text == "Rack number" || text == "Slot number" ? std::optional(Text(u"Number"))
                                                                  : std::nullopt;
        });
    }
    OneLabel(const OneLabel&) = delete;
    OneLabel& operator=(const OneLabel&) = delete;
    ~OneLabel() { i18n::setTranslator({}); }
};

class EditorValuesTest : public EditorTest {
protected:
    /// A PLC "P" with a command "C" and so many items.
    static std::string plantOf(int items) {
        std::string children = R"({"@Skill.S7.Command": {"name": "C"}})";
        for (int i = 0; i != items; ++i)
            children += R"(,{"@Skill.S7.Item": {"name": "i)" + std::to_string(i) + "\"}}";
        return R"({"@Skill.S7.PLC": {"name": "P", "address": "h", "children": [)" + children +
               "]}}";
    }

    static std::vector<model::Element*> itemsOf(const Project& plant) {
        std::vector<model::Element*> items;
        for (const auto& child : plant.element("/P").childElements().subspan(1))
            items.push_back(child.get());
        return items;
    }
};

} // namespace

TEST_F(EditorValuesTest, EditsThatAreMadeTogetherAreOneStep) {
    auto plant = load(plantOf(3));
    Editor editor(plant);
    const auto before = sightOf(plant);
    auto& item = plant.element("/P/i1");
    editor.together(u"Do this", [&] {
        set(editor, "/P/i0", u"Address", Text(u"MB7"));
        editor.rename(item, "renamed");
        editor.together(u"Do more", [&] { set(editor, "/P/renamed", u"Writable", true); });
    });
    EXPECT_EQ(editor.stepsDone(), 1);
    EXPECT_EQ(editor.undoText(), u"Do this");
    EXPECT_EQ(item.name(), "renamed");
    expectUndoAndRedo(editor, before);

    const auto after = sightOf(plant);
    EXPECT_THROW(editor.together(u"Fail",
                                 [&] {
                                     set(editor, "/P/i0", u"Address", Text(u"MB8"));
                                     editor.rename(item, "i2"); // which is taken
                                 }),
                 EditError);
    EXPECT_EQ(sightOf(plant), after);
    editor.together({}, [&] { editor.rename(item, "again"); });
    EXPECT_EQ(editor.undoText(), u"Rename “renamed”");
    editor.undo();
    editor.together(u"Nothing", [&] { set(editor, "/P/i0", u"Address", Text(u"MB7")); });
    EXPECT_EQ(editor.stepsDone(), 1);
}

TEST_F(EditorValuesTest, PutsBackWhatNoUserCouldEnter) {
    struct Case {
        std::string_view path;
        Text label;
        ui::ControlValue value;
    };
    const std::array cases{
        Case{"/P", u"Rack number", std::uint64_t{3}},
        Case{"/P", u"Address", Text(u"192.168.0.1")},
        Case{"/P", u"Address", Text()},
        Case{"/P/B", u"DB number", std::uint64_t{7}},
        Case{"/P/B/odd", u"Data type", Text(u"Int")},
        Case{"/P/B/odd", u"Address", Text(u"DBW2")},
        Case{"/P/B/odd", u"Command", Text(u"/P/C")},
        Case{"/P/B/odd", u"Command", Text()},
        Case{"/P/B/odd", u"Writable", false},
        Case{"/P/B/S/text", u"String size", std::uint64_t{20}},
        Case{"/P/B/S/text", u"Command", Text(u"/P/D")},
    };
    for (const auto& [path, label, value] : cases) {
        auto project = load(kPlant);
        const auto before = sightOf(project);
        Editor editor(project);
        set(editor, path, label, value);
        EXPECT_EQ(shown(project, path, label), value);
        EXPECT_NE(sightOf(project), before);
        expectUndoAndRedo(editor, before);
    }
}

TEST_F(EditorValuesTest, RefusesWhatTheFormRefuses) {
    struct Case {
        std::string_view path;
        Text label;
        ui::ControlValue value;
        std::string_view message;
    };
    const std::array cases{
        Case{"/P", u"Rack number", std::uint64_t{8},
             "/P: Rack number: the value must lie between 0 and 7"},
        Case{"/P/B", u"DB number", std::uint64_t{65536},
             "/P/B: DB number: the value must lie between 1 and 65535"},
        Case{"/P/B/odd", u"Data type", Text(u"Long"),
             "/P/B/odd: Data type: “Long” is not one of the choices"},
        Case{"/P/B/odd", u"Command", Text(u"/P/B"),
             "/P/B/odd: Command: “/P/B” is not one of the elements that can be chosen"},
        Case{"/P/B/odd", u"Effective address", Text(u"DB1.DB2"),
             "/P/B/odd: Effective address: the field is shown for information and cannot be set"},
        Case{"/P/B/odd", u"Writable", Text(u"true"),
             "/P/B/odd: Writable: the field does not take a value of this type"},
        Case{"/P/B/odd", u"String size", std::uint64_t{9},
             "/P/B/odd: String size: the field is not shown now"},
        Case{"/P", u"Import DB File", Text(u"x"),
             "/P: Import DB File: a button has no value that could be set"},
        Case{"/P", u"Rack", std::uint64_t{1},
             "there is no field “Rack”; the fields are: Address, Rack number, Slot number, Import "
             "DB File"},
        Case{"/P/C", u"Rack", std::uint64_t{1},
             "there is no field “Rack”; the element has no fields"},
    };
    auto project = load(kPlant);
    const auto before = sightOf(project);
    Editor editor(project);
    for (const auto& [path, label, value, message] : cases) {
        EXPECT_EQ(messageOf([&] { set(editor, path, label, value); }), message);
        EXPECT_EQ(sightOf(project), before);
    }
    EXPECT_FALSE(editor.canUndo());
}

TEST_F(EditorValuesTest, SetsAllFieldsOrNone) {
    auto project = load(kPlant);
    const auto before = sightOf(project);
    Editor editor(project);
    std::vector<FieldValue> values{
        {"address", Text(u"host")}, {"slot", std::uint64_t{2}}, {"rack", std::uint64_t{8}}};
    EXPECT_NE(messageOf([&] { editor.setValues(project.element("/P"), values); }), "");
    EXPECT_EQ(sightOf(project), before);
    EXPECT_FALSE(editor.canUndo());

    values.back().value = std::uint64_t{7};
    editor.setValues(project.element("/P"), values);
    EXPECT_EQ(shown(project, "/P", u"Rack number"), ui::ControlValue(std::uint64_t{7}));
    expectUndoAndRedo(editor, before);
    editor.undo();
    EXPECT_FALSE(editor.canUndo());
}

TEST_F(EditorValuesTest, TakesAFieldThatAnotherValueShows) {
    auto project = load(kPlant);
    Editor editor(project);
    const std::vector<FieldValue> values{{"stringSize", std::uint64_t{9}},
                                         {"dataType", Text(u"WString")}};
    editor.setValues(project.element("/P/B/odd"), values);
    EXPECT_NE(elementsOf(project).find(R"("stringSize": 9)"), std::string::npos);
}

TEST_F(EditorValuesTest, TakesWhatAFieldHasForNoChange) {
    auto project = load(kPlant);
    Editor editor(project);
    Follower follower(project.model().root());
    editor.setObserver(&follower);
    set(editor, "/P", u"Rack number", std::uint64_t{200}); // though it could not be entered
    set(editor, "/P/B/odd", u"Command", Text(u"/P/gone"));
    set(editor, "/P/B/odd", u"Address", Text(u"DB7.DB8")); // differs, and is corrected
    EXPECT_EQ(shown(project, "/P/B/odd", u"Address"), ui::ControlValue(Text(u"DB8")));
    editor.undo();
    EXPECT_FALSE(editor.canUndo());
    EXPECT_EQ(follower.changed.size(), 2U);
    EXPECT_EQ(follower.historyChanges, 2U);
}

TEST_F(EditorValuesTest, TellsFieldsWithOneLabelApart) {
    const OneLabel oneLabel;
    auto project = load(kPlant);
    Editor editor(project);
    auto& plc = project.element("/P");
    const FieldValue value{"slot", std::uint64_t{9}};
    editor.setValues(plc, {&value, 1});
    EXPECT_EQ(editor.undoText(), u"Change “Number”");
    {
        const OpenForm form(plc);
        EXPECT_EQ(form.find("slot")->value(), ui::ControlValue(std::uint64_t{9}));
        EXPECT_EQ(form.find("rack")->value(), ui::ControlValue(std::uint64_t{200}));
        EXPECT_EQ(form.find("Number"), nullptr);

        // A user's word for a field is its label, and its key where the label does not tell.
        EXPECT_EQ(messageOf([&] { static_cast<void>(fieldOf(form, u"Number")); }),
                  "there are several fields “Number”; their keys are: rack, slot");
        EXPECT_EQ(&fieldOf(form, u"slot"), form.find("slot"));
        EXPECT_EQ(messageOf([&] { static_cast<void>(fieldOf(form, u"address")); }),
                  "there is no field “address”; the fields are: Address, Number, Number, Import DB "
                  "File");
    }
    editor.undo();
    EXPECT_EQ(OpenForm(plc).find("slot")->value(), ui::ControlValue(std::uint64_t{0}));
}

TEST_F(EditorValuesTest, LetsItemsFollowTheNumberOfTheirBlock) {
    auto project = load(kPlant);
    Editor editor(project);
    set(editor, "/P/B", u"DB number", std::uint64_t{12});
    EXPECT_EQ(shown(project, "/P/B/S/text", u"Effective address"),
              ui::ControlValue(Text(u"DB12.DBB4")));
    expectAsReloaded(project);
    editor.undo();
    EXPECT_EQ(shown(project, "/P/B/S/text", u"Effective address"),
              ui::ControlValue(Text(u"DB0.DBB4")));
    expectAsReloaded(project);
}

TEST_F(EditorValuesTest, SetsOneFieldOfManyElements) {
    auto project = load(plantOf(500));
    const auto before = sightOf(project);
    Editor editor(project);
    auto items = itemsOf(project);

    editor.setValue(items, {"command", Text(u"/P/C")});
    for (const auto* const item : items)
        EXPECT_EQ(shown(project, item->path(), u"Command"), ui::ControlValue(Text(u"/P/C")));
    EXPECT_EQ(editor.undoText(), u"Change “Command” of 500 elements");
    expectUndoAndRedo(editor, before);
    editor.undo();

    items.push_back(&project.element("/P")); // has no such field
    EXPECT_EQ(
        messageOf([&] { editor.setValue(items, {"command", Text(u"/P/C")}); }),
        "there is no field “command”; the fields are: Address, Rack number, Slot number, Import "
        "DB File");
    EXPECT_EQ(sightOf(project), before);
}

TEST_F(EditorValuesTest, TakesAStoppedChangeBack) {
    auto project = load(plantOf(2000));
    const auto before = sightOf(project);
    Editor editor(project);
    const auto items = itemsOf(project);
    const FieldValue value{"command", Text(u"/P/C")};

    std::size_t furthest = 0;
    editor.setProgress([&](std::size_t done, std::size_t total) {
        EXPECT_LE(done, total);
        furthest = std::max(furthest, done);
        return done < 1000;
    });
    EXPECT_THROW(editor.setValue(items, value), EditStopped);
    EXPECT_GE(furthest, 1000U);
    EXPECT_EQ(sightOf(project), before);
    EXPECT_FALSE(editor.canUndo());

    editor.setProgress([](std::size_t, std::size_t) { return true; });
    editor.setValue(items, value);
    editor.setProgress([](std::size_t, std::size_t) { return false; }); // nobody stops an undo
    editor.undo();
    EXPECT_EQ(sightOf(project), before);
    editor.redo();
    EXPECT_NE(sightOf(project), before);
}

} // namespace corvane::workbench::core::test
