#include "GuiTesting.hpp"

#include <QComboBox>
#include <QSplitter>
#include <QToolButton>

namespace corvane::workbench::gui {

namespace {

class NoticeTest : public GuiTest {
protected:
    NoticeTest() { importExample(); }

    NoticeBar& bar() { return child<NoticeBar>(); }

    void renameLine(const char* name) {
        session().rename(*element("/PLC/Line"), QString::fromUtf8(name));
        settle();
    }
};

} // namespace

TEST_F(NoticeTest, ANoticeMovesNothing) {
    bar().clear();
    const auto treePlace = tree().mapTo(&window(), QPoint());
    const auto treeSize = tree().size();
    renameLine("Filler");
    ASSERT_TRUE(bar().isVisible());
    EXPECT_EQ(tree().mapTo(&window(), QPoint()), treePlace);
    EXPECT_EQ(tree().size(), treeSize);
}

TEST_F(NoticeTest, ANoticeStaysWithinTheMiddleOfTheWindow) {
    renameLine("Filler");
    auto& middle = *child<FormPanel>().parentWidget();
    const auto inMiddle = [&] {
        return middle.rect().contains(
            QRect(bar().mapTo(window_.get(), QPoint()) - middle.mapTo(window_.get(), QPoint()),
                  bar().size()));
    };
    EXPECT_TRUE(inMiddle());
    window().resize(800, 560);
    settle();
    EXPECT_TRUE(inMiddle());
    auto* const splitter = qobject_cast<QSplitter*>(child<TreePanel>().parentWidget());
    splitter->setSizes({400, 400});
    settle();
    EXPECT_TRUE(inMiddle());
}

TEST_F(NoticeTest, ARefusalIsGoneAfterTheNextGoodStep) {
    renameLine("Filler");
    EXPECT_TRUE(notice().contains("Filler")) << qPrintable(notice());
    renameLine("Bottling");
    EXPECT_EQ(notice(), "");
    EXPECT_FALSE(bar().isVisible());

    session().rename(*element("/PLC/Bottling"), QStringLiteral("Filler"));
    EXPECT_NE(notice(), "");
    trigger(Command::undo);
    EXPECT_EQ(notice(), "");
}

TEST_F(NoticeTest, WhatARemovalHasToldIsGoneAfterUndo) {
    select("/PLC/Default Command");
    trigger(Command::remove);
    EXPECT_TRUE(notice().contains("refer to nothing")) << qPrintable(notice());
    trigger(Command::undo);
    EXPECT_EQ(notice(), "");
}

TEST_F(NoticeTest, WhyAFileWasNotImportedStaysUntilItIsClosed) {
    window().openFiles({writeFile("broken.db", "DATA_BLOCK \"x\" STRUCT a : Nonsense;")});
    settle();
    const auto reason = notice();
    EXPECT_FALSE(reason.isEmpty());
    renameLine("Bottling");
    EXPECT_EQ(notice(), reason);
    for (auto* const close : bar().findChildren<QToolButton*>())
        QTest::mouseClick(close, Qt::LeftButton);
    EXPECT_EQ(notice(), "");
}

} // namespace corvane::workbench::gui
