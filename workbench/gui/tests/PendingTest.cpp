// What is being typed is never lost: each command finds it entered.
#include "GuiTesting.hpp"

#include "workbench/core/edit/workspace/Fields.hpp"
#include "workbench/gui/fields/UnsignedSpinBox.hpp"
#include "workbench/gui/preview/ImportPreviewDialog.hpp"

#include <QPushButton>

namespace corvane::workbench::gui {

namespace {

class PendingTest : public GuiTest {
protected:
    PendingTest() {
        importExample();
        dialogs_.projectToSave = path("line.json");
        trigger(Command::saveProjectAs);
    }

    /// Types a number into a field of the form and stays there.
    void typeNumber(const char* elementPath, const char* label, const char* number) {
        select(elementPath);
        auto* const box = field<UnsignedSpinBox>(label);
        ASSERT_NE(box, nullptr) << label;
        QTest::mouseClick(box, Qt::LeftButton);
        box->selectAll();
        QTest::keyClicks(box, QString::fromUtf8(number));
        settle();
    }

    /// Types a text over what a cell of a tree or table shows and stays there.
    void typeOver(QAbstractItemView& view, const QModelIndex& index, const char* text) {
        view.setFocus();
        view.setCurrentIndex(index);
        view.edit(index);
        auto* const editor = QApplication::focusWidget();
        ASSERT_TRUE(view.viewport()->isAncestorOf(editor));
        QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(editor, QString::fromUtf8(text));
        settle();
    }

    ui::ControlValue valueOf(const char* elementPath, std::u16string_view label) {
        const core::OpenForm form(*element(elementPath));
        return core::fieldOf(form, label).value();
    }
    ui::ControlValue number() { return valueOf("/PLC/Line", u"DB number"); }
    QByteArray saved() { return readFile(path("line.json")); }

    QModelIndex rowNamed(const char* name) {
        const auto& model = *table().model();
        for (int row = 0; row != model.rowCount(); ++row)
            if (model.index(row, 0).data() == name)
                return model.index(row, 0);
        return {};
    }

    static constexpr std::uint64_t kBefore = 51;
    static constexpr std::uint64_t kTyped = 77;
};

} // namespace

TEST_F(PendingTest, SavingEntersTheNumber) {
    typeNumber("/PLC/Line", "DB number", "77");
    EXPECT_EQ(number(), ui::ControlValue(kBefore));
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(number(), ui::ControlValue(kTyped));
    EXPECT_TRUE(saved().contains("\"DBNumber\": 77")) << saved().left(2000).toStdString();
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_TRUE(field<UnsignedSpinBox>("DB number")->hasFocus());
}

TEST_F(PendingTest, ClosingEntersTheNumberAndAsks) {
    typeNumber("/PLC/Line", "DB number", "77");
    dialogs_.unsaved = Dialogs::Unsaved::cancel;
    window().close();
    settle();
    EXPECT_EQ(dialogs_.unsavedAsked, 1);
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(number(), ui::ControlValue(kTyped));

    typeNumber("/PLC/Line", "DB number", "78");
    dialogs_.unsaved = Dialogs::Unsaved::save;
    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_FALSE(window().isVisible());
    EXPECT_TRUE(saved().contains("\"DBNumber\": 78"));
}

TEST_F(PendingTest, UndoTakesBackTheNumber) {
    select("/PLC");
    type("Address", "10.0.0.1");
    typeNumber("/PLC/Line", "DB number", "77");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(number(), ui::ControlValue(kBefore));
    EXPECT_EQ(valueOf("/PLC", u"Address"), ui::ControlValue(u"10.0.0.1"));
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(number(), ui::ControlValue(kTyped));
}

TEST_F(PendingTest, RedoFindsANewStep) {
    select("/PLC");
    type("Address", "10.0.0.1");
    trigger(Command::undo);
    typeNumber("/PLC/Line", "DB number", "77");
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(number(), ui::ControlValue(kTyped));
    EXPECT_EQ(valueOf("/PLC", u"Address"), ui::ControlValue(u""));
    EXPECT_FALSE(action(Command::redo).isEnabled());
}

TEST_F(PendingTest, AnImportEntersTheNumber) {
    typeNumber("/PLC", "Rack number", "3");
    dropFile(*field("Rack number"), example("packaging-plant.db"));
    EXPECT_EQ(valueOf("/PLC", u"Rack number"), ui::ControlValue(std::uint64_t{3}));
    child<ImportPreviewDialog>().reject();
    settle();

    typeNumber("/PLC", "Slot number", "4");
    dialogs_.fileToImport = example("bottling-line.db");
    field<QPushButton>("Import DB File")->click(); // as its key does: the keyboard stays
    settle();
    EXPECT_EQ(valueOf("/PLC", u"Slot number"), ui::ControlValue(std::uint64_t{4}));
}

TEST_F(PendingTest, AnotherElementIsLookedAtWhenTheNumberIsEntered) {
    typeNumber("/PLC/Line", "DB number", "77");
    press(Qt::Key_F8); // to the address that is missing
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC"));
    EXPECT_EQ(number(), ui::ControlValue(kTyped));

    typeNumber("/PLC/Line", "DB number", "78");
    child<TreePanel>().select(*element("/PLC/Filler")); // the keyboard stays
    settle();
    EXPECT_EQ(number(), ui::ControlValue(std::uint64_t{78}));
    EXPECT_EQ(child<FormPanel>().element(), element("/PLC/Filler"));
}

TEST_F(PendingTest, AnotherProjectIsOpenedAfterAQuestion) {
    typeNumber("/PLC/Line", "DB number", "77");
    dialogs_.unsaved = Dialogs::Unsaved::save;
    press(Qt::Key_N, Qt::ControlModifier);
    EXPECT_EQ(dialogs_.unsavedAsked, 1);
    EXPECT_TRUE(session().isEmpty());
    EXPECT_TRUE(saved().contains("\"DBNumber\": 77"));
}

TEST_F(PendingTest, ACellIsEntered) {
    select("/PLC/Line");
    trigger(Command::showTable);
    typeOver(table(), rowNamed("SpeedSetpoint").siblingAtColumn(4), "MW40");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(saved().contains("\"MW40\""));
    EXPECT_EQ(valueOf("/PLC/Line/SpeedSetpoint", u"Address"), ui::ControlValue(u"MW40"));
}

TEST_F(PendingTest, ANumberInACellIsEntered) {
    select("/PLC/Line");
    trigger(Command::showTable);
    const auto size = rowNamed("OrderNumber").siblingAtColumn(3);
    typeOver(table(), size, "29");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(saved().contains("\"stringSize\": 29"));
    EXPECT_EQ(valueOf("/PLC/Line/OrderNumber", u"String size"),
              ui::ControlValue(std::uint64_t{29}));

    typeOver(table(), size, "30");
    press(Qt::Key_Tab);
    EXPECT_EQ(valueOf("/PLC/Line/OrderNumber", u"String size"),
              ui::ControlValue(std::uint64_t{30}));
}

TEST_F(PendingTest, ANameIsEntered) {
    select("/PLC/Line");
    typeOver(tree(), tree().currentIndex(), "Bottling");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_NE(element("/PLC/Bottling"), nullptr);
    EXPECT_TRUE(saved().contains("\"Bottling\""));
}

// The reason stays in sight, and nothing happens that the user may not want then.
TEST_F(PendingTest, ANameThatIsRefusedHoldsTheCommandBack) {
    select("/PLC");
    type("Address", "10.0.0.1");
    select("/PLC/Line");
    typeOver(tree(), tree().currentIndex(), "Filler");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(notice().contains("Filler")) << qPrintable(notice());
    EXPECT_FALSE(saved().contains("10.0.0.1"));

    typeOver(tree(), tree().currentIndex(), "Filler");
    window().close();
    settle();
    EXPECT_TRUE(window().isVisible());
    EXPECT_EQ(dialogs_.unsavedAsked, 0);

    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(saved().contains("10.0.0.1"));
    EXPECT_NE(element("/PLC/Line"), nullptr);
}

// An edit of so many elements is made beside the window; the command waits for it.
TEST_F(PendingTest, ALargeProjectIsSavedWithTheNumber) {
    QByteArray items;
    for (int i = 0; i != 60'000; ++i)
        items += QByteArray(i == 0 ? "" : ",") + R"({"@Skill.S7.Item":{"name":"i)" +
                 QByteArray::number(i) + R"(","address":"DB0"}})";
    const auto file =
        writeFile("large.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"P",)"
                                R"("children":[{"@Skill.S7.DataBlock":{"name":"B","DBNumber":3,)"
                                R"("children":[)" +
                                    items + "]}}]}}]}");
    window().openFiles({file});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i59999") != nullptr; }));
    typeNumber("/P/B", "DB number", "9");
    press(Qt::Key_S, Qt::ControlModifier);
    EXPECT_TRUE(settleUntil([&] { return readFile(file).contains("\"DBNumber\": 9"); }));
    EXPECT_FALSE(window().isWindowModified());
}

} // namespace corvane::workbench::gui
