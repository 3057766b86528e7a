#include "GuiTesting.hpp"

#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QPushButton>
#include <QSet>
#include <QTableView>

namespace corvane::workbench::gui {

namespace {

class TableTest : public GuiTest {
protected:
    TableTest() {
        importExample();
        select("/PLC");
        trigger(Command::showTable);
    }

    QModelIndex cell(const char* name, const char* heading) {
        const auto& model = *table().model();
        for (int row = 0; row != model.rowCount(); ++row)
            if (model.index(row, 0).data() == name)
                return model.index(row, columnOf(heading));
        return {};
    }

    /// The line in which a cell is edited from now on, all of it selected; null if there is none.
    QLineEdit* editing(const QModelIndex& index) {
        table().setCurrentIndex(index);
        table().edit(index);
        auto* const line = table().viewport()->findChild<QLineEdit*>();
        if (line != nullptr)
            line->selectAll();
        return line;
    }

    void selectRows(int first, int last) {
        const auto& model = *table().model();
        table().selectionModel()->select(
            QItemSelection(model.index(first, 0), model.index(last, 0)),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        settle();
    }

    /// Through the bar that changes the selected rows, by keys and clicks.
    void takeCommandFromSelected() {
        QTest::keyClick(&window(), Qt::Key_E, Qt::ControlModifier);
        settle();
        auto& which = child<QComboBox>("bulkField");
        ASSERT_TRUE(which.isVisible());
        which.setCurrentText(QStringLiteral("Command"));
        settle();
        auto* const value = child<BulkEditBar>().findChild<QComboBox*>(QStringLiteral("command"));
        ASSERT_NE(value, nullptr);
        QTest::keyClick(value, Qt::Key_Home); // the first choice is none
        QTest::mouseClick(&child<QPushButton>("bulkApply"), Qt::LeftButton);
        settle();
    }
};

} // namespace

TEST_F(TableTest, TheLabelsOfTheFormAreTheColumns) {
    QStringList headings;
    for (int i = 0; i != table().model()->columnCount(); ++i)
        headings += table().model()->headerData(i, Qt::Horizontal).toString();
    EXPECT_EQ(headings, QStringList({"Name", "Location", "Data type", "String size", "Address",
                                     "Effective address", "Writable", "Command"}));
    EXPECT_EQ(cell("Enabled", "Effective address").data(), "DB51.DB0.0");
    EXPECT_EQ(cell("Enabled", "Data type").data(), "Boolean");
    EXPECT_EQ(cell("Enabled", "String size").data(), "");
    EXPECT_EQ(cell("OrderNumber", "String size").data(), "16");
    EXPECT_EQ(cell("Enabled", "Command").data(), "/PLC/Default Command");
}

TEST_F(TableTest, AnotherKindOfElementsCanBeChosen) {
    auto& kinds = child<QComboBox>("tableClass");
    const int blocks = kinds.findText(QStringLiteral("Data Block (4)"));
    ASSERT_GE(blocks, 0);
    kinds.setCurrentIndex(blocks);
    emit kinds.activated(blocks);
    settle();
    EXPECT_EQ(column(table(), 0), QStringList({"Line", "Filler", "Recipe", "DB50"}));
    EXPECT_EQ(cell("Line", "DB number").data(), "51");
}

TEST_F(TableTest, NumbersInTextsSortByTheirValue) {
    select("/PLC/Line");
    const int address = columnOf("Address");
    table().model()->sort(address, Qt::AscendingOrder);
    settle();
    const auto rising = column(table(), address);
    ASSERT_GT(rising.size(), 10);
    EXPECT_LT(rising.indexOf("DB24"), rising.indexOf("DB102"));
    EXPECT_LT(rising.indexOf("DB0.2"), rising.indexOf("DB2"));
    table().model()->sort(address, Qt::DescendingOrder);
    settle();
    const auto falling = column(table(), address);
    EXPECT_GT(falling.indexOf("DB24"), falling.indexOf("DB102"));
    EXPECT_EQ(falling.size(), rising.size());
}

TEST_F(TableTest, TheFilterLooksIntoEveryCell) {
    QTest::keyClick(&window(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    auto& filter = child<QLineEdit>("tableFilter");
    EXPECT_TRUE(filter.hasFocus());
    QTest::keyClicks(&filter, QStringLiteral("wstring"));
    ASSERT_TRUE(settleUntil([&] { return table().model()->rowCount() < 96; }));
    for (const auto& type : column(table(), columnOf("Data type")))
        EXPECT_EQ(type, "WString");
    filter.clear();
    EXPECT_TRUE(settleUntil([&] { return table().model()->rowCount() == 96; }));
}

TEST_F(TableTest, ACellIsEditedInPlaceWithTheFieldOfTheForm) {
    const auto address = cell("SpeedSetpoint", "Address");
    auto* const line = editing(address);
    ASSERT_NE(line, nullptr);
    QTest::keyClicks(line, QStringLiteral("MW4"));
    QTest::keyClick(line, Qt::Key_Return);
    settle();
    EXPECT_EQ(cell("SpeedSetpoint", "Address").data(), "MW4");
    EXPECT_FALSE(cell("SpeedSetpoint", "Address").data(Qt::ToolTipRole).toString().isEmpty());
    trigger(Command::undo);
    EXPECT_EQ(cell("SpeedSetpoint", "Address").data(), "DB2");
}

TEST_F(TableTest, ACellRefusesControlCharacters) {
    const auto address = cell("SpeedSetpoint", "Address");
    auto* const line = editing(address);
    ASSERT_NE(line, nullptr);
    QGuiApplication::clipboard()->setText(QStringLiteral("DB2\nDB4"));
    QTest::keyClick(line, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(line, Qt::Key_Return);
    settle();
    EXPECT_EQ(cell("SpeedSetpoint", "Address").data(), "DB2");
    EXPECT_EQ(notice(), "/PLC/Line/SpeedSetpoint: Address: the value must be one line without "
                        "control characters");
}

TEST_F(TableTest, WhatTheFormOnlyShowsCannotBeEdited) {
    EXPECT_FALSE(cell("Enabled", "Effective address").flags().testFlag(Qt::ItemIsEditable));
    EXPECT_FALSE(cell("Enabled", "String size").flags().testFlag(Qt::ItemIsEditable));
    EXPECT_TRUE(cell("OrderNumber", "String size").flags().testFlag(Qt::ItemIsEditable));
}

TEST_F(TableTest, ANumberThatIsBeingTypedIsGivenToAllRows) {
    auto& kinds = child<QComboBox>("tableClass");
    kinds.setCurrentIndex(kinds.findText(QStringLiteral("Data Block (4)")));
    emit kinds.activated(kinds.currentIndex());
    settle();
    selectRows(0, 1);
    QTest::keyClick(&window(), Qt::Key_E, Qt::ControlModifier);
    settle();
    child<QComboBox>("bulkField").setCurrentText(QStringLiteral("DB number"));
    settle();
    auto* const number = child<BulkEditBar>().findChild<UnsignedSpinBox*>();
    ASSERT_NE(number, nullptr);
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("77"));
    child<QPushButton>("bulkApply").click(); // as its key does: the keyboard stays
    settle();
    EXPECT_EQ(cell("Line", "DB number").data(), "77");
    EXPECT_EQ(cell("Filler", "DB number").data(), "77");
}

TEST_F(TableTest, SeveralRowsAreChangedAtOnceInOneStep) {
    selectRows(0, 19);
    takeCommandFromSelected();
    EXPECT_EQ(column(table(), columnOf("Command")).count(QString()), 20);
    trigger(Command::undo);
    EXPECT_EQ(column(table(), columnOf("Command")).count("/PLC/Default Command"), 96);
}

TEST_F(TableTest, SeveralHundredRowsAreChangedAtOnceInOneStep) {
    window().openFiles({writeFile("many.db", "DATA_BLOCK Many { S7_Optimized_Access := 'FALSE' } "
                                             "STRUCT values : Array[1..250] of Int; END_STRUCT; "
                                             "BEGIN END_DATA_BLOCK")});
    confirmImport();
    select("/PLC/Many");
    trigger(Command::showTable);
    ASSERT_EQ(table().model()->rowCount(), 250);
    selectRows(20, 219);
    takeCommandFromSelected();
    const auto commands = column(table(), columnOf("Command"));
    EXPECT_EQ(commands.mid(20, 200).count(QString()), 200);
    EXPECT_EQ(commands.count("/PLC/Default Command"), 50);
    trigger(Command::undo);
    EXPECT_EQ(column(table(), columnOf("Command")).count("/PLC/Default Command"), 250);
}

TEST_F(TableTest, SeveralRowsAreChangedByKeyboardAlone) {
    selectRows(0, 2);
    table().setFocus();
    press(Qt::Key_E, Qt::ControlModifier);
    auto& which = child<QComboBox>("bulkField");
    ASSERT_TRUE(which.hasFocus());
    while (which.currentText() != "Address" && which.currentIndex() + 1 < which.count())
        press(Qt::Key_Down);
    ASSERT_EQ(which.currentText(), "Address");
    press(Qt::Key_Tab);
    auto* const value = child<BulkEditBar>().findChild<QLineEdit*>(QStringLiteral("address"));
    ASSERT_NE(value, nullptr);
    ASSERT_TRUE(value->hasFocus());
    value->selectAll();
    QTest::keyClicks(value, QStringLiteral("MW8"));
    press(Qt::Key_Tab);
    EXPECT_TRUE(child<QPushButton>("bulkApply").hasFocus());
    press(Qt::Key_Return);
    EXPECT_EQ(column(table(), columnOf("Address")).count("MW8"), 3);
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    press(Qt::Key_Escape);
    EXPECT_FALSE(which.isVisible());
    EXPECT_TRUE(table().hasFocus());
}

TEST_F(TableTest, TheButtonsOfTheBarStayWhereTheyAre) {
    selectRows(0, 2);
    trigger(Command::changeSelected);
    auto& which = child<QComboBox>("bulkField");
    QSet<int> places;
    for (int i = 0; i != which.count(); ++i) {
        which.setCurrentIndex(i);
        settle();
        places += child<QPushButton>("bulkApply").x();
    }
    EXPECT_EQ(places.size(), 1);
}

TEST_F(TableTest, TheColumnThatIsChangedIsInSight) {
    window().resize(700, 600);
    selectRows(0, 2);
    trigger(Command::changeSelected);
    auto& which = child<QComboBox>("bulkField");
    const auto isSeen = [&](const char* heading) {
        const auto place = table().visualRect(table().model()->index(0, columnOf(heading)));
        return table().viewport()->rect().intersects(place) && place.left() >= 0;
    };
    ASSERT_FALSE(isSeen("Command"));
    which.setFocus();
    press(Qt::Key_End);
    ASSERT_EQ(which.currentText(), "Command");
    EXPECT_TRUE(isSeen("Command"));
    press(Qt::Key_Home);
    EXPECT_TRUE(isSeen("Data type"));
}

TEST_F(TableTest, RowsAreCopiedAsATableWithHeadings) {
    select("/PLC/Line");
    auto* const header = child<QTableView>("elementTable").horizontalHeader();
    selectRows(3, 4);
    table().setFocus();
    press(Qt::Key_C, Qt::ControlModifier);
    const auto* const clipboard = QGuiApplication::clipboard();
    EXPECT_EQ(clipboard->text(),
              "Name\tLocation\tData type\tString size\tAddress\tEffective address\tWritable\t"
              "Command\n"
              "SpeedSetpoint\t/PLC/Line\tsigned 16-bit integer\t\tDB2\tDB51.DB2\tWritable\t"
              "/PLC/Default Command\n"
              "SpeedActual\t/PLC/Line\tsigned 16-bit integer\t\tDB4\tDB51.DB4\tRead only\t"
              "/PLC/Default Command\n");

    // As they are shown: without what is hidden, in the order of the columns.
    for (const char* const heading : {"Location", "String size", "Writable", "Command"})
        header->setSectionHidden(columnOf(heading), true);
    header->moveSection(header->visualIndex(columnOf("Effective address")), 1);
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(clipboard->text(), "Name\tEffective address\tData type\tAddress\n"
                                 "SpeedSetpoint\tDB51.DB2\tsigned 16-bit integer\tDB2\n"
                                 "SpeedActual\tDB51.DB4\tsigned 16-bit integer\tDB4\n");
}

TEST_F(TableTest, TheTableFollowsTheTree) {
    select("/PLC/Line/Drive");
    EXPECT_EQ(column(table(), 0),
              QStringList({"Start", "Fault", "Frequency", "Minimum", "Maximum"}));
    trigger(Command::showTree);
    trigger(Command::remove);
    EXPECT_TRUE(settleUntil([&] { return cell("Frequency", "Name") == QModelIndex(); }));
    trigger(Command::undo);
    select("/PLC/Line/Drive");
    EXPECT_EQ(table().model()->rowCount(), 5);
}

} // namespace corvane::workbench::gui
