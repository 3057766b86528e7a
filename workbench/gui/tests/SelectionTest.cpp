// Commands act on what is selected where the keyboard is, and leave the rest as it was.
#include "GuiTesting.hpp"

#include <QTableView>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>

namespace corvane::workbench::gui {

namespace {

class SelectionTest : public GuiTest {
protected:
    SelectionTest() { importExample(); }

    QTreeView& treeView() { return child<QTreeView>("projectTree"); }

    QModelIndex treeIndex(const char* elementPath) {
        QModelIndex at;
        for (const auto& name : QString::fromUtf8(elementPath).split('/', Qt::SkipEmptyParts)) {
            const auto& model = *tree().model();
            int row = 0;
            while (row != model.rowCount(at) && model.index(row, 0, at).data() != name)
                ++row;
            at = model.index(row, 0, at);
        }
        return at;
    }

    /// Clicks on the row of the table with this name.
    void clickRow(const char* name, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        const auto row = column(table(), 0).indexOf(QString::fromUtf8(name));
        ASSERT_GE(row, 0) << name;
        const auto index = table().model()->index(static_cast<int>(row), 0);
        table().scrollTo(index);
        QTest::mouseClick(table().viewport(), Qt::LeftButton, modifiers,
                          table().visualRect(index).center());
        settle();
    }

    void clickToolButton(Command command) {
        for (auto* const button : child<QToolBar>().findChildren<QToolButton*>())
            if (button->defaultAction() == &action(command))
                QTest::mouseClick(button, Qt::LeftButton);
        settle();
    }

    QStringList selectedInTree() {
        QStringList paths;
        for (const auto* const one : child<TreePanel>().selected())
            paths += QString::fromStdString(one->path());
        return paths;
    }
};

} // namespace

TEST_F(SelectionTest, RemovingWithTheKeyboardInTheTableRemovesItsRows) {
    select("/PLC");
    trigger(Command::showTable);
    clickRow("Enabled");
    clickRow("SpeedSetpoint", Qt::ControlModifier);
    press(Qt::Key_Delete, Qt::ControlModifier);
    ASSERT_NE(element("/PLC"), nullptr);
    EXPECT_EQ(element("/PLC/Line/Enabled"), nullptr);
    EXPECT_EQ(element("/PLC/Line/SpeedSetpoint"), nullptr);
    EXPECT_NE(element("/PLC/Line/Running"), nullptr);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC"}));
    trigger(Command::undo);
    EXPECT_NE(element("/PLC/Line/Enabled"), nullptr);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC"}));
}

TEST_F(SelectionTest, TheToolBarAndTheDeleteKeyActOnTheTableToo) {
    select("/PLC");
    trigger(Command::showTable);
    clickRow("Enabled");
    clickToolButton(Command::remove);
    ASSERT_NE(element("/PLC"), nullptr);
    EXPECT_EQ(element("/PLC/Line/Enabled"), nullptr);
    clickRow("Running");
    press(Qt::Key_Delete);
    ASSERT_NE(element("/PLC"), nullptr);
    EXPECT_EQ(element("/PLC/Line/Running"), nullptr);
}

TEST_F(SelectionTest, WithoutSelectedRowsTheTableRemovesNothing) {
    select("/PLC");
    trigger(Command::showTable);
    table().setFocus();
    table().clearSelection();
    settle();
    EXPECT_FALSE(action(Command::remove).isEnabled());
    press(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_NE(element("/PLC"), nullptr);
    tree().setFocus();
    EXPECT_TRUE(action(Command::remove).isEnabled());
}

TEST_F(SelectionTest, RenamingInTheTableIsOfItsRow) {
    select("/PLC");
    trigger(Command::showTable);
    clickRow("Enabled");
    press(Qt::Key_F2);
    auto* const editor = table().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Released"));
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_NE(element("/PLC/Line/Released"), nullptr);
}

TEST_F(SelectionTest, WhatIsAddedWithTheKeyboardInTheTableStandsBelowItsRow) {
    select("/PLC");
    trigger(Command::showTable);
    clickRow("Enabled");
    EXPECT_EQ(offeredByAddMenu(), QStringList({"S7 Compatible PLC"}));
}

TEST_F(SelectionTest, UndoingARemovalBringsExpansionAndSelectionBack) {
    select("/PLC/Line/Drive/Limits/Maximum");
    select("/PLC/Line");
    const auto limits = treeIndex("/PLC/Line/Drive/Limits");
    ASSERT_TRUE(treeView().isExpanded(limits));
    tree().setFocus();
    press(Qt::Key_Delete);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Filler"}));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Filler"));
    select("/PLC/Recipe");
    trigger(Command::undo);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Line"}));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line"));
    EXPECT_TRUE(treeView().isExpanded(treeIndex("/PLC/Line/Drive/Limits")));
    EXPECT_FALSE(treeView().isExpanded(treeIndex("/PLC/Filler")));
    trigger(Command::redo);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Recipe"}));
}

TEST_F(SelectionTest, UndoingTheRemovalOfSeveralSelectsThemAgain) {
    child<TreePanel>().select({element("/PLC/Line"), element("/PLC/Recipe")});
    trigger(Command::remove);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Filler"}));
    trigger(Command::undo);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Line", "/PLC/Recipe"}));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line"));
}

TEST_F(SelectionTest, AStepOfValuesLeavesTheSelectionAlone) {
    select("/PLC");
    type("Address", "10.0.0.1");
    select("/PLC/Line");
    trigger(Command::undo);
    EXPECT_EQ(selectedInTree(), QStringList({"/PLC/Line"}));
}

TEST_F(SelectionTest, ALargeProjectComesBackAsItWas) {
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    window().openFiles({writeFile("large.json", largeProject())});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    select("/P/B/i5");
    trigger(Command::showTree);
    select("/P/B");
    trigger(Command::remove);
    ASSERT_TRUE(settleUntil([&] { return element("/P/B") == nullptr; }));
    EXPECT_EQ(selectedInTree(), QStringList({"/P"}));
    trigger(Command::undo);
    ASSERT_TRUE(settleUntil([&] { return element("/P/B") != nullptr; }));
    EXPECT_EQ(selectedInTree(), QStringList({"/P/B"}));
    EXPECT_TRUE(treeView().isExpanded(treeIndex("/P/B")));
}

} // namespace corvane::workbench::gui
