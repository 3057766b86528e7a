// What the tree and the table show, and where.
#include "GuiTesting.hpp"

#include "workbench/gui/tree/TreeModel.hpp"

#include <QScreen>
#include <QTreeView>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

class ViewsTest : public GuiTest {
protected:
    ViewsTest() { importExample(); }

    QTreeView& treeView() { return child<QTreeView>("projectTree"); }

    QModelIndex indexOf(const char* elementPath) {
        return window_->findChild<TreeModel*>()->indexOf(*element(elementPath));
    }

    void typeIntoTreeFilter(const char* text) {
        QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text));
    }

    /// The picture of a line of the tree, branches included.
    QImage lineOf(const char* elementPath) {
        const auto line = treeView().visualRect(indexOf(elementPath));
        return treeView()
            .viewport()
            ->grab(QRect(0, line.top(), treeView().viewport()->width(), line.height()))
            .toImage();
    }
};

} // namespace

TEST_F(ViewsTest, DownInTheFilterLeadsToTheFirstMatch) {
    select("/PLC/Recipe");
    typeIntoTreeFilter("maximum");
    settle();
    press(Qt::Key_Down);
    EXPECT_TRUE(tree().hasFocus());
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive/Limits/Maximum"));
    EXPECT_EQ(child<TreePanel>().selected(),
              std::vector({element("/PLC/Line/Drive/Limits/Maximum")}));
    EXPECT_EQ(child<FormPanel>().element(), element("/PLC/Line/Drive/Limits/Maximum"));
}

TEST_F(ViewsTest, TheFirstMatchIsGoneToAsSoonAsItIsFound) {
    typeIntoTreeFilter("maximum");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive/Limits/Maximum"));
}

TEST_F(ViewsTest, WhatIsLookedAtStaysSelectedWhereTheFilterShowsIt) {
    select("/PLC/Line/Drive");
    typeIntoTreeFilter("drive");
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive"));
    EXPECT_EQ(child<TreePanel>().selected(), std::vector({element("/PLC/Line/Drive")}));
    child<QLineEdit>("treeFilter").clear();
    typeIntoTreeFilter("recipe");
    settle();
    EXPECT_EQ(child<TreePanel>().current(), nullptr);
    EXPECT_TRUE(child<TreePanel>().selected().empty());
    EXPECT_FALSE(action(Command::remove).isEnabled());
    child<QLineEdit>("treeFilter").clear();
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive"));
}

TEST_F(ViewsTest, ARemovalWithAFilterLeavesOneThatIsBothCurrentAndSelected) {
    typeIntoTreeFilter("a");
    settle();
    select("/PLC/Line/Drive/Start");
    tree().setFocus();
    press(Qt::Key_Delete);
    EXPECT_EQ(element("/PLC/Line/Drive/Start"), nullptr);
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Drive/Fault"));
    EXPECT_EQ(child<TreePanel>().selected(), std::vector({element("/PLC/Line/Drive/Fault")}));
}

TEST_F(ViewsTest, ACollapsedElementShowsThatSomethingBelowItIsWrong) {
    const auto troubled = [&](const char* elementPath) {
        return indexOf(elementPath).data(TreeModel::kTroubledRole).toBool();
    };
    select("/PLC/Line");
    treeView().collapse(indexOf("/PLC/Line"));
    const auto before = lineOf("/PLC/Line");
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "MW4");
    EXPECT_TRUE(troubled("/PLC"));
    EXPECT_TRUE(troubled("/PLC/Line"));
    EXPECT_FALSE(troubled("/PLC/Filler"));
    select("/PLC/Line");
    treeView().collapse(indexOf("/PLC/Line"));
    EXPECT_NE(lineOf("/PLC/Line"), before);
    EXPECT_TRUE(indexOf("/PLC/Line")
                    .data(Qt::AccessibleDescriptionRole)
                    .toString()
                    .contains("problems below"));
    trigger(Command::undo);
    EXPECT_FALSE(troubled("/PLC"));
    EXPECT_EQ(lineOf("/PLC/Line"), before);
}

TEST_F(ViewsTest, TheArrowIsSeenOnTheSelection) {
    select("/PLC/Line");
    const auto line = lineOf("/PLC/Line");
    const int end = treeView().visualRect(indexOf("/PLC/Line")).left();
    const auto text = window().palette().color(QPalette::HighlightedText).lightness();
    int nearest = 255;
    for (int x = end - treeView().indentation(); x != end; ++x)
        for (int y = 0; y != line.height(); ++y)
            nearest = std::min(nearest, std::abs(line.pixelColor(x, y).lightness() - text));
    EXPECT_LT(nearest, 40);
}

TEST_F(ViewsTest, TheWindowIsNoLargerThanTheScreen) {
    const auto room = window().screen()->availableSize();
    EXPECT_LE(window().width(), room.width());
    EXPECT_LE(window().height(), room.height());
}

TEST_F(ViewsTest, TheFilterOfTheTableHasRoomInASmallWindow) {
    trigger(Command::showTable);
    window().resize(800, 560);
    settle();
    EXPECT_EQ(window().size(), QSize(800, 560));
    EXPECT_GE(child<QLineEdit>("tableFilter").width(), 160);
}

TEST_F(ViewsTest, AnEditorSitsOnItsItem) {
    select("/PLC/Line");
    trigger(Command::showTable);
    const auto sitsOn = [](QAbstractItemView& view, const QModelIndex& index) {
        view.setFocus();
        view.setCurrentIndex(index);
        view.edit(index);
        const auto* const editor = QApplication::focusWidget();
        ASSERT_TRUE(view.viewport()->isAncestorOf(editor));
        const auto item = view.visualRect(index);
        EXPECT_NEAR(editor->geometry().center().y(), item.center().y(), 1);
        EXPECT_LE(editor->height(), item.height() + 4);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    };
    for (const int of : {0, 2, 4})
        sitsOn(table(), table().model()->index(3, of));
    sitsOn(tree(), tree().currentIndex());
}

} // namespace corvane::workbench::gui
