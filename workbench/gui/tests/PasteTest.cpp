// What is pasted into the table from spreadsheets, and filled down within it.
#include "GuiTesting.hpp"

#include "workbench/core/project/DocumentWriter.hpp"
#include "workbench/gui/table/RowText.hpp"

#include <corvane/utils/io/StringOutputStream.hpp>

#include <QClipboard>
#include <QHeaderView>
#include <QTableView>

namespace corvane::workbench::gui {

namespace {

class PasteTest : public GuiTest {
protected:
    PasteTest() {
        importExample();
        select("/PLC/Line");
        trigger(Command::showTable);
        table().setFocus();
    }

    /// Makes a cell the current one, and selects rows from there on.
    void go(int row, const char* heading, int rows = 1) {
        const auto& model = *table().model();
        const auto place = model.index(row, columnOf(heading));
        table().selectionModel()->select(
            QItemSelection(place, model.index(row + rows - 1, place.column())),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        table().selectionModel()->setCurrentIndex(place, QItemSelectionModel::NoUpdate);
        settle();
    }

    void paste(const QString& text) {
        QGuiApplication::clipboard()->setText(text);
        press(Qt::Key_V, Qt::ControlModifier);
    }

    QStringList cells(const char* heading, int first, int count) {
        return column(table(), columnOf(heading)).mid(first, count);
    }

    /// The project as a save would write it.
    std::string document() {
        utils::io::StringOutputStream stream;
        core::writeProject(stream, session().plugins(), session().root());
        return stream.take();
    }
};

} // namespace

TEST_F(PasteTest, TheTextOfASpreadsheetIsLinesOfCells) {
    using Lines = std::vector<QStringList>;
    const std::pair<const char*, Lines> cases[] = {
        {"", {}},
        {"a", {{"a"}}},
        {"a\n", {{"a"}}},
        {"a\tb\r\nc\td\r\n", {{"a", "b"}, {"c", "d"}}},
        {"a\rb", {{"a"}, {"b"}}},
        {"\t\n\n\t", {{"", ""}, {""}, {"", ""}}},
        {"\"a\tb\nc\"\td", {{"a\tb\nc", "d"}}},
        {"\"say \"\"no\"\"\"\n", {{"say \"no\""}}},
        {"\"\"\t\"\"\"\"", {{"", "\""}}},
        {"\"open\tb", {{"\"open", "b"}}}, // nothing is enclosed
        {"\"a\" b\t5\"", {{"\"a\" b", "5\""}}},
    };
    for (const auto& [text, lines] : cases)
        EXPECT_EQ(cellsOfText(QString::fromUtf8(text)), lines) << text;
}

TEST_F(PasteTest, CellsAreEnteredFromTheCurrentOneOnInOneStep) {
    const auto before = document();
    go(3, "Address");
    // "Effective address", between them, is only shown.
    child<QTableView>("elementTable").hideColumn(columnOf("Effective address"));
    paste(QStringLiteral("DB200\tRead only\r\nDB202\tWritable\r\n"));
    EXPECT_EQ(cells("Address", 3, 2), QStringList({"DB200", "DB202"}));
    EXPECT_EQ(cells("Writable", 3, 2), QStringList({"Read only", "Writable"}));
    EXPECT_EQ(cells("Effective address", 3, 2), QStringList({"DB51.DB200", "DB51.DB202"}));
    EXPECT_TRUE(action(Command::undo).text().contains(QStringLiteral("Paste 2 rows")));
    trigger(Command::undo);
    EXPECT_EQ(document(), before);
    trigger(Command::redo);
    EXPECT_EQ(cells("Address", 3, 2), QStringList({"DB200", "DB202"}));
}

TEST_F(PasteTest, WhatWasCopiedComesBackByItsHeadingsWhereverItsRowsStand) {
    go(3, "Name", 3);
    press(Qt::Key_C, Qt::ControlModifier);
    auto lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 4);
    ASSERT_TRUE(lines[1].startsWith(QStringLiteral("SpeedSetpoint\t/PLC/Line\t")));
    const auto before = document();
    go(0, "Name");
    paste(lines.join(QLatin1Char('\n')));
    EXPECT_EQ(document(), before);
    EXPECT_TRUE(action(Command::undo).text().contains(QStringLiteral("Import"))); // no step

    lines[1]
        .replace(QStringLiteral("signed 16-bit integer"), QStringLiteral("String"))
        .replace(QStringLiteral("\tDB2\t"), QStringLiteral("\tDB300\t"));
    lines.swapItemsAt(1, 3);
    paste(lines.join(QLatin1Char('\n')));
    EXPECT_EQ(cells("Name", 3, 1), QStringList("SpeedSetpoint"));
    EXPECT_EQ(cells("Data type", 3, 2), QStringList({"String", "signed 16-bit integer"}));
    EXPECT_EQ(cells("Effective address", 3, 1), QStringList("DB51.DB300"));
    trigger(Command::undo);
    EXPECT_EQ(document(), before);
}

TEST_F(PasteTest, HeadingsNameTheColumnsAndNamesAreEntered) {
    go(3, "Command", 2);
    paste(QStringLiteral("Address\tComment\tname\nDB200\tfast\tRpm\nDB202\tslow\tRpmActual\n"));
    EXPECT_EQ(cells("Name", 3, 2), QStringList({"Rpm", "RpmActual"}));
    EXPECT_EQ(cells("Address", 3, 2), QStringList({"DB200", "DB202"}));
    trigger(Command::undo);
    EXPECT_EQ(cells("Name", 3, 2), QStringList({"SpeedSetpoint", "SpeedActual"}));
}

TEST_F(PasteTest, ASingleLineGoesToAllSelectedRows) {
    go(3, "Writable", 4);
    paste(QStringLiteral("Read only\n"));
    EXPECT_EQ(cells("Writable", 3, 4), QStringList(4, QStringLiteral("Read only")));
}

TEST_F(PasteTest, WhatIsRefusedIsRefusedAsAWholeWithItsPlace) {
    const std::pair<const char*, const char*> cases[] = {
        {"DB200\nDB\a", "Row 2 of the text: /PLC/Line/SpeedActual: Address: the value must be one "
                        "line without control characters"},
        {"DB200\tDB9",
         "Row 1 of the text: /PLC/Line/SpeedSetpoint: Effective address: the field is shown for "
         "information and cannot be set"},
        {"Writable\tName\nRead only\tFirst\nmaybe\tSecond",
         "Row 3 of the text: /PLC/Line/SpeedActual: Writable: “maybe” is not one of the choices: "
         "false, true, Read only, Writable"},
        {"Address\tName\nDB200\tSpeedActual", "Row 2 of the text: there is another element "
                                              "“SpeedActual” beside it"},
        {"Address\tString size\nDB200\t7",
         "Row 2 of the text: /PLC/Line/SpeedSetpoint: String size: the field is not shown now"},
        {"Name\tLocation\nNobody\t/PLC/Line",
         "Row 2 of the text: there is no such element as /PLC/Line/Nobody"},
        {"a\tb\tc\td\te", "The text has 5 columns, but from the current cell on there are 4"},
    };
    const auto before = document();
    for (const auto& [text, refusal] : cases) {
        go(3, "Address");
        paste(QString::fromUtf8(text));
        EXPECT_EQ(notice().toStdString(), refusal);
        EXPECT_EQ(document(), before) << text;
    }
    go(table().model()->rowCount() - 1, "Address");
    paste(QStringLiteral("DB0\nDB2"));
    EXPECT_EQ(notice(), "The text has 2 rows, but from the current row on there are 1");
    EXPECT_EQ(document(), before);
}

TEST_F(PasteTest, TheTopmostCellIsFilledDown) {
    const auto before = document();
    go(3, "Address", 3);
    press(Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(cells("Address", 3, 3), QStringList(3, QStringLiteral("DB2")));
    EXPECT_EQ(element("/PLC/Line/SpeedSetpoint 2"), nullptr); // nothing was duplicated
    trigger(Command::undo);
    EXPECT_EQ(document(), before);
    go(3, "Name", 3);
    EXPECT_FALSE(action(Command::fillDown).isEnabled());
    go(3, "Address");
    EXPECT_FALSE(action(Command::fillDown).isEnabled());
}

TEST_F(PasteTest, TheKeyPutsWhatWasPickedUpUntilSomethingIsCopied) {
    go(3, "Address");
    trigger(Command::pickUp);
    ASSERT_TRUE(action(Command::putHere).isEnabled());
    press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(action(Command::putHere).isEnabled());
    go(5, "Address");
    paste(QStringLiteral("DB200"));
    EXPECT_EQ(cells("Address", 5, 1), QStringList("DB200"));
    // Out of sight nothing is pasted.
    trigger(Command::showForm);
    EXPECT_FALSE(action(Command::pasteCells).isEnabled());
    EXPECT_FALSE(action(Command::copyRows).isEnabled());
}

TEST_F(PasteTest, ALargeTableIsPastedIntoBesideTheWindow) {
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    window().openFiles({writeFile("large.json", largeProject())});
    settle();
    select("/P/B");
    trigger(Command::showTable);
    ASSERT_TRUE(settleUntil([&] { return table().model()->rowCount() == 30'000; }));
    table().setFocus();
    go(0, "Address");
    QString text;
    for (int i = 0; i != 2000; ++i)
        text += QStringLiteral("DB%1\n").arg(2 * i);
    paste(text);
    ASSERT_TRUE(settleUntil([&] { return cells("Address", 1999, 1).contains("DB3998"); }));
    trigger(Command::undo);
    EXPECT_TRUE(settleUntil([&] { return cells("Address", 1999, 1).contains("DB0"); }));
}

} // namespace corvane::workbench::gui
