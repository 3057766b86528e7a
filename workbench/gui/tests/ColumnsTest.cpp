// The columns of the table: which are shown, in which order, and which one stays in sight.
#include "GuiTesting.hpp"

#include <QComboBox>
#include <QHeaderView>
#include <QMenu>
#include <QScrollBar>
#include <QTableView>

namespace corvane::workbench::gui {

namespace {

class ColumnsTest : public GuiTest {
protected:
    ColumnsTest() { open(); }

    void open() {
        importExample();
        select("/PLC/Line");
        trigger(Command::showTable);
    }

    QTableView& view() { return child<QTableView>("elementTable"); }
    QHeaderView& header() { return *view().horizontalHeader(); }

    /// The headings that are shown, from left to right.
    QStringList headings() {
        QStringList texts;
        for (int place = 0; place != header().count(); ++place)
            if (const int column = header().logicalIndex(place); !view().isColumnHidden(column))
                texts += view().model()->headerData(column, Qt::Horizontal).toString();
        return texts;
    }

    /// From the menu at the headings.
    void choose(const char* text) {
        emit header().customContextMenuRequested({5, 5});
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (auto* const one : menu->actions())
            if (one->text() == text)
                menu->setActiveAction(one);
        QTest::keyClick(menu, Qt::Key_Return);
        settle();
    }

    void showKind(const char* text) {
        auto& kinds = child<QComboBox>("tableClass");
        kinds.setCurrentIndex(kinds.findText(QLatin1String(text)));
        emit kinds.activated(kinds.currentIndex());
        settle();
    }
};

} // namespace

TEST_F(ColumnsTest, WhatIsHiddenAndInWhichOrderIsKeptForEachKind) {
    const auto all = headings();
    choose("Location");
    choose("String size");
    choose("Location");
    EXPECT_EQ(headings()[1], "Location");
    choose("Location");
    header().moveSection(header().visualIndex(columnOf("Effective address")), 1);
    const QStringList wanted{"Name",    "Effective address", "Data type",
                             "Address", "Writable",          "Command"};
    EXPECT_EQ(headings(), wanted);
    view().model()->sort(columnOf("Address"), Qt::AscendingOrder);
    settle();
    EXPECT_EQ(headings(), wanted);
    select("/PLC");
    showKind("Data Block (4)");
    EXPECT_EQ(headings(), QStringList({"Name", "Location", "DB number"}));
    choose("Location");
    showKind("Data Item (96)");
    EXPECT_EQ(headings(), wanted);

    reopenWindow();
    open();
    EXPECT_EQ(headings(), wanted);
    select("/PLC");
    showKind("Data Block (4)");
    EXPECT_EQ(headings(), QStringList({"Name", "DB number"}));
    showKind("Data Item (96)");
    choose("All Columns, as in the Form");
    EXPECT_EQ(headings(), all);
    reopenWindow();
    open();
    EXPECT_EQ(headings(), all);
}

TEST_F(ColumnsTest, TheNameStaysTheFirstColumn) {
    header().moveSection(0, 3);
    EXPECT_EQ(headings().front(), "Name");
    header().moveSection(header().visualIndex(columnOf("Command")), 0);
    EXPECT_EQ(headings().front(), "Name");
    EXPECT_EQ(headings()[1], "Command");
}

TEST_F(ColumnsTest, TheNameStaysInSightWhileScrolledSideways) {
    window().resize(760, 600);
    settle();
    auto& names = child<QTableView>("frozenNames");
    auto& sideways = *view().horizontalScrollBar();
    ASSERT_GT(sideways.maximum(), 0);
    EXPECT_FALSE(names.isVisible());
    sideways.setValue(sideways.maximum());
    ASSERT_TRUE(names.isVisible());
    EXPECT_EQ(names.mapTo(&window(), QPoint()),
              header().mapTo(&window(), QPoint())); // over the headings, too
    EXPECT_EQ(names.width(), view().columnWidth(0));
    EXPECT_EQ(names.rowViewportPosition(5), view().rowViewportPosition(5));

    // What is clicked there is selected, and nothing is scrolled.
    click(names, names.model()->index(5, 0));
    settle();
    EXPECT_EQ(sideways.value(), sideways.maximum());
    EXPECT_EQ(view().currentIndex().row(), 5);
    EXPECT_TRUE(view().hasFocus());
    // A cell that the keyboard goes to does not stay below it.
    for (int i = 0; i != 3; ++i)
        press(Qt::Key_Right);
    EXPECT_GE(view().visualRect(view().currentIndex()).left(), names.width());
    const int row = view().rowAt(0) + 12;
    view().verticalScrollBar()->setValue(row);
    EXPECT_EQ(names.rowAt(0), view().rowAt(0));

    // A name is edited in its own place.
    view().setCurrentIndex(view().model()->index(row, 0));
    sideways.setValue(sideways.maximum());
    press(Qt::Key_F2);
    EXPECT_EQ(sideways.value(), 0);
    EXPECT_FALSE(names.isVisible());
    auto* const editor = qobject_cast<QLineEdit*>(QApplication::focusWidget());
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("Renamed"));
    press(Qt::Key_Return);
    EXPECT_NE(element("/PLC/Line/Renamed"), nullptr);
}

} // namespace corvane::workbench::gui
