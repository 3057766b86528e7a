// What is done every day, by the keys that it is done with.
#include "GuiTesting.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

#include <QListWidget>
#include <QPushButton>
#include <QTreeView>

namespace corvane::workbench::gui {

namespace {

class EverydayTest : public GuiTest {
protected:
    QModelIndex indexOf(const char* elementPath) {
        return window_->findChild<TreeModel*>()->indexOf(*element(elementPath));
    }
    bool isExpanded(const char* elementPath) {
        return child<QTreeView>("projectTree").isExpanded(indexOf(elementPath));
    }
};

} // namespace

TEST_F(EverydayTest, BothKeysOfRedoRedo) {
    importExample();
    select("/PLC");
    type("Address", "10.0.0.1");
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(shown("Address"), "");
    press(Qt::Key_Y, Qt::ControlModifier);
    EXPECT_EQ(shown("Address"), "10.0.0.1");
    press(Qt::Key_Z, Qt::ControlModifier);
    press(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(shown("Address"), "10.0.0.1");
}

TEST_F(EverydayTest, WhatIsAddedIsNamedAtOnce) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    ASSERT_TRUE(tree().viewport()->isAncestorOf(editor));
    EXPECT_EQ(editor->selectedText(), "PLC");
    QTest::keyClicks(editor, QStringLiteral("Press"));
    press(Qt::Key_Return);
    EXPECT_NE(element("/Press"), nullptr);
    addFromMenu("addButton", QStringLiteral("Data Block"));
    press(Qt::Key_Escape);
    EXPECT_NE(element("/Press/DataBlock"), nullptr);
}

TEST_F(EverydayTest, TheFirstStepsAreNamedAsThePlugInNamesThem) {
    EXPECT_EQ(child<QPushButton>("startAdd").text(), "Add S7 Compatible PLC");
    auto& import = child<QPushButton>("startImport");
    EXPECT_EQ(import.text(), "Import DB File…");
    EXPECT_EQ(action(Command::importFile).text(), "Import DB File…");
    dialogs_.fileToImport = example("bottling-line.db");
    QTest::mouseClick(&import, Qt::LeftButton);
    EXPECT_TRUE(settleUntil([&] { return element("/PLC/Line/Enabled") != nullptr; }));
    EXPECT_EQ(dialogs_.askedExtension, ".db");
    trigger(Command::saveProject);
    EXPECT_EQ(dialogs_.suggested, "PLC.json");
}

TEST_F(EverydayTest, AListWithoutProblemsIsOneLine) {
    importExample();
    select("/PLC");
    type("Address", "10.0.0.1");
    auto& panel = child<ProblemsPanel>();
    EXPECT_FALSE(problems().isVisible());
    EXPECT_LT(panel.height(), 3 * panel.fontMetrics().height());
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "MW4");
    EXPECT_TRUE(problems().isVisible());
    EXPECT_GT(panel.height(), 100);
    trigger(Command::undo);
    EXPECT_LT(panel.height(), 3 * panel.fontMetrics().height());
}

TEST_F(EverydayTest, ANewItemRefersToTheOnlyCommand) {
    importExample();
    const auto commandOf = [&](const char* elementPath) {
        const core::OpenForm form(*element(elementPath));
        return toQt(std::get<std::u16string>(form.find("command")->value()));
    };
    select("/PLC/Line");
    addFromMenu("addButton", QStringLiteral("Data Item"));
    press(Qt::Key_Escape);
    EXPECT_EQ(commandOf("/PLC/Line/Item"), "/PLC/Default Command");
    EXPECT_TRUE(action(Command::undo).text().contains(QStringLiteral("Add Data Item")));
    trigger(Command::undo);
    EXPECT_EQ(element("/PLC/Line/Item"), nullptr);
    select("/PLC");
    addFromMenu("addButton", QStringLiteral("Command"));
    press(Qt::Key_Escape);
    select("/PLC/Line");
    addFromMenu("addButton", QStringLiteral("Data Item"));
    press(Qt::Key_Escape);
    EXPECT_EQ(commandOf("/PLC/Line/Item"), "");
}

TEST_F(EverydayTest, TheFileMenuImportsIntoWhatIsSelected) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    press(Qt::Key_Return);
    dialogs_.fileToImport = example("bottling-line.db");
    press(Qt::Key_I, Qt::ControlModifier);
    EXPECT_TRUE(settleUntil([&] { return element("/PLC/Line/Enabled") != nullptr; }));
    EXPECT_EQ(dialogs_.askedExtension, ".db");
}

TEST_F(EverydayTest, ABlockIsDuplicatedWithAllBelowIt) {
    importExample();
    select("/PLC/Line");
    tree().setFocus();
    press(Qt::Key_D, Qt::ControlModifier);
    ASSERT_NE(element("/PLC/Line 2/Drive/Limits/Maximum"), nullptr);
    EXPECT_EQ(child<TreePanel>().selected(), std::vector({element("/PLC/Line 2")}));
    EXPECT_TRUE(action(Command::undo).text().contains(QStringLiteral("Duplicate “Line”")));
    press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(element("/PLC/Line 2"), nullptr);
    EXPECT_EQ(child<TreePanel>().selected(), std::vector({element("/PLC/Line")}));
}

TEST_F(EverydayTest, EverythingIsExpandedAndCollapsed) {
    importExample();
    select("/PLC/Line");
    trigger(Command::expandAll);
    EXPECT_TRUE(isExpanded("/PLC/Line/Drive/Limits"));
    EXPECT_TRUE(isExpanded("/PLC/Filler"));
    // It is remembered as if it had been done one by one.
    trigger(Command::remove);
    trigger(Command::undo);
    EXPECT_TRUE(isExpanded("/PLC/Line/Drive/Limits"));
    trigger(Command::collapseAll);
    EXPECT_FALSE(isExpanded("/PLC"));
    EXPECT_FALSE(isExpanded("/PLC/Line"));
}

TEST_F(EverydayTest, AnElementIsGoneToByAPartOfItsPath) {
    importExample();
    tree().setFocus();
    press(Qt::Key_P, Qt::ControlModifier);
    auto& line = child<QLineEdit>("goToLine");
    ASSERT_TRUE(line.hasFocus());
    auto& list = child<QListWidget>("goToList");
    EXPECT_EQ(list.count(), GoToElement::kMaxListed);
    QTest::keyClicks(&line, QStringLiteral("drive/limits/m"));
    settle();
    ASSERT_EQ(list.count(), 2);
    EXPECT_EQ(list.item(0)->text(), "/PLC/Line/Drive/Limits/Minimum");
    QTest::keyClick(&line, Qt::Key_Down);
    QTest::keyClick(&line, Qt::Key_Return);
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive/Limits/Maximum"));
    EXPECT_TRUE(tree().hasFocus());

    press(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(line.text(), "");
    QTest::keyClicks(&line, QStringLiteral("nothing of that name"));
    settle();
    EXPECT_EQ(list.count(), 0);
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_TRUE(line.isVisible());
    QTest::keyClick(&line, Qt::Key_Escape);
    EXPECT_FALSE(line.isVisible());
}

TEST_F(EverydayTest, TheMenuOfAProblemLeadsToItsField) {
    importExample();
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "MW4");
    select("/PLC");
    trigger(Command::showProblems);
    problems().setCurrentIndex(problems().model()->index(problems().model()->rowCount() - 1, 0));
    ASSERT_EQ(problems().contextMenuPolicy(), Qt::ActionsContextMenu);
    problems().actions().front()->trigger();
    settle();
    EXPECT_EQ(child<FormPanel>().element(), element("/PLC/Line/SpeedSetpoint"));
    EXPECT_TRUE(field<QLineEdit>("Address")->hasFocus());
}

} // namespace corvane::workbench::gui
