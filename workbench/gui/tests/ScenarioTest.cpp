#include "GuiTesting.hpp"

#include "workbench/gui/fields/UnsignedSpinBox.hpp"

#include <QPlainTextEdit>
#include <QPushButton>

#include <array>
#include <functional>

namespace corvane::workbench::gui {

TEST_F(GuiTest, AUserBuildsAProjectFromNothing) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    ASSERT_NE(element("/PLC"), nullptr);
    EXPECT_EQ(errorAt("Address"), "Please enter the network address of the target PLC");

    type("Address", "192.168.0.10");
    EXPECT_EQ(errorAt("Address"), "");

    dialogs_.fileToImport = example("bottling-line.db");
    QTest::mouseClick(field<QPushButton>("Import DB File"), Qt::LeftButton);
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/Line/Enabled") != nullptr; }));
    EXPECT_EQ(dialogs_.askedTitle, "Import DB File");
    EXPECT_EQ(dialogs_.askedExtension, ".db");
    EXPECT_TRUE(notice().startsWith("Imported bottling-line.db into /PLC: "))
        << qPrintable(notice());

    select("/PLC/Line/Enabled");
    EXPECT_EQ(shown("Effective address"), "DB51.DB0.0");
    select("/PLC/Line");
    auto* const number = field<UnsignedSpinBox>("DB number");
    ASSERT_NE(number, nullptr);
    number->setFocus();
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("77"));
    QTest::keyClick(number, Qt::Key_Return);
    settle();
    select("/PLC/Line/Enabled");
    EXPECT_EQ(shown("Effective address"), "DB77.DB0.0");
    select("/PLC/Line/Drive/Limits/Maximum");
    EXPECT_TRUE(shown("Effective address").startsWith("DB77.DB"));

    QTest::keyClick(&window(), Qt::Key_Z, Qt::ControlModifier);
    settle();
    select("/PLC/Line/Enabled");
    EXPECT_EQ(shown("Effective address"), "DB51.DB0.0");

    dialogs_.projectToSave = path("line.json");
    QTest::keyClick(&window(), Qt::Key_S, Qt::ControlModifier);
    settle();
    EXPECT_FALSE(window().isWindowModified());
    reopenWindow();
    window().openFiles({path("line.json")});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/Line/Enabled") != nullptr; }));
    select("/PLC");
    EXPECT_EQ(shown("Address"), "192.168.0.10");

    runCommandLine({"import", example("bottling-line.db"), "--project", path("other.json")});
    runCommandLine({"set", path("other.json"), "/PLC", "Address=192.168.0.10"});
    EXPECT_EQ(readFile(path("line.json")), readFile(path("other.json")));
    EXPECT_EQ(runCommandLine({"show", path("line.json"), "--json"}),
              runCommandLine({"show", path("other.json"), "--json"}));
}

// A file must not be without an address, so that it says "missing", which is none all the same.
TEST_F(GuiTest, AnAddressThatWasNeverEnteredIsAskedForAfterReadingToo) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    press(Qt::Key_Return);
    dialogs_.projectToSave = path("empty.json");
    trigger(Command::saveProject);
    reopenWindow();
    window().openFiles({path("empty.json")});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC") != nullptr; }));
    select("/PLC");
    EXPECT_EQ(shown("Address"), "missing");
    EXPECT_EQ(element("/PLC")->getSkillElement()->localPropertyErrorCount(), 0U);
    EXPECT_EQ(errorAt("Address"), "Please enter the network address of the target PLC");
    const QString listed = "Warning: Please enter the network address of the target PLC";
    EXPECT_TRUE(settleUntil([&] { return column(problems(), 0) == QStringList{listed}; }));
    EXPECT_EQ(column(problems(), 2), QStringList{"Address"});
    type("Address", "10.0.0.1");
    EXPECT_EQ(errorAt("Address"), "");
    EXPECT_TRUE(settleUntil([&] { return problems().model()->rowCount() == 0; }));
}

TEST_F(GuiTest, WhatIsTypedInOneVisitIsOneStep) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    type("Address", "10.0.0.1");
    trigger(Command::undo);
    EXPECT_EQ(shown("Address"), "");
    ASSERT_NE(element("/PLC"), nullptr);
    trigger(Command::redo);
    EXPECT_EQ(shown("Address"), "10.0.0.1");
    trigger(Command::undo);
    trigger(Command::undo);
    EXPECT_EQ(element("/PLC"), nullptr);
}

TEST_F(GuiTest, UndoIsTheProjectsEvenInATextLine) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    type("Address", "10.0.0.1");
    QTest::keyClick(field<QLineEdit>("Address"), Qt::Key_Z, Qt::ControlModifier);
    settle();
    EXPECT_EQ(shown("Address"), "");
    QTest::keyClick(field<QLineEdit>("Address"), Qt::Key_Z,
                    Qt::ControlModifier | Qt::ShiftModifier);
    settle();
    EXPECT_EQ(shown("Address"), "10.0.0.1");
}

TEST_F(GuiTest, AFailedImportSaysWhyAndChangesNothing) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    dialogs_.fileToImport = writeFile("broken.db", "DATA_BLOCK \"x\" STRUCT a : Nonsense;");
    const auto undoBefore = session().editor().undoText();
    QTest::mouseClick(field<QPushButton>("Import DB File"), Qt::LeftButton);
    settle();
    EXPECT_TRUE(notice().startsWith("Error importing S7 data blocks from " + path("broken.db")))
        << qPrintable(notice());
    EXPECT_TRUE(element("/PLC")->childElements().empty());
    EXPECT_EQ(session().editor().undoText(), undoBefore);
}

TEST_F(GuiTest, AFailedImportShowsThePlaceAndWhatHelps) {
    window().openFiles({writeFile("optimized.db", "DATA_BLOCK \"x\"\n"
                                                  "{ S7_Optimized_Access := 'TRUE' }\n")});
    ASSERT_TRUE(settleUntil([&] { return !notice().isEmpty(); }));
    const auto told = notice().split(QLatin1Char('\n'));
    ASSERT_EQ(told.size(), 2) << qPrintable(notice());
    EXPECT_TRUE(told[0].endsWith("S7 Optimized Access should be set to FALSE "));
    EXPECT_TRUE(told[1].contains("export it again")) << qPrintable(told[1]);
    clickNotice("Show Place");
    const auto& shownLines = child<QPlainTextEdit>();
    EXPECT_EQ(shownLines.window()->windowTitle(), "optimized.db, line 2, column 26");
    EXPECT_EQ(shownLines.toPlainText(), "optimized.db, line 2, column 26\n\n"
                                        "{ S7_Optimized_Access := 'TRUE' }\n"
                                        "                         ^\n");
    EXPECT_FALSE(notice().isEmpty()) << "the reason stays to be read beside the place";
}

// What stands in the project may now mean something else: nobody would look for that.
TEST_F(GuiTest, AnImportTellsOfNamesThatMislead) {
    const auto block = [](const char* variables) {
        return QByteArray("DATA_BLOCK \"x\"\n{ S7_Optimized_Access := 'FALSE' }\nSTRUCT\n") +
               variables + "END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n";
    };
    window().openFiles({writeFile("x.db", block("a : Int; b : Int;"))});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/x/b") != nullptr; }));
    EXPECT_TRUE(notice().endsWith(QStringLiteral(
        " 1 warning: x.db:1:12: a block number is not in the file and was guessed: “x” got 1")))
        << qPrintable(notice());
    window().openFiles({writeFile("x.db", block("a : Int; b : Int;"))});
    ASSERT_TRUE(settleUntil([&] {
        return child<NoticeBar>().kind() == NoticeBar::Kind::information;
    })) << "the second time the number is the project's";
    window().openFiles({writeFile("x.db", block("new : Int; a : Int; b : Int;"))});
    confirmImport();
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/x/b 2") != nullptr; }));
    EXPECT_EQ(child<NoticeBar>().kind(), NoticeBar::Kind::warning);
    EXPECT_TRUE(notice().contains(QStringLiteral(
        "/PLC/x/a: keeps its name, but the file calls it “new”, and another one “a”")))
        << qPrintable(notice());
}

TEST_F(GuiTest, AnImportTellsItsWarning) {
    window().openFiles({writeFile("one.db", dataBlock("a"))});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/a") != nullptr; }));
    EXPECT_EQ(child<NoticeBar>().kind(), NoticeBar::Kind::warning);
    EXPECT_TRUE(notice().startsWith("Imported one.db into /PLC: ")) << qPrintable(notice());
    EXPECT_TRUE(notice().endsWith(QStringLiteral(
        " 1 warning: one.db:1:12: a block number is not in the file and was guessed: “a” got 1")))
        << qPrintable(notice());
    EXPECT_TRUE(child<NoticeBar>().findChildren<QPushButton*>().isEmpty());
    select("/PLC");
    type("Address", "10.0.0.1");
    EXPECT_FALSE(notice().isEmpty()) << "a warning stays until it is closed";
}

// Names that are not UTF-8 are worth a warning for each block.
TEST_F(GuiTest, AnImportTellsHowManyWarningsThereAreAndShowsAll) {
    QByteArray source;
    for (const char* const name : {"\xE4", "plain", "\xF6", "\xFC"})
        source += dataBlock(name);
    window().openFiles({writeFile("three.db", source)});
    ASSERT_TRUE(settleUntil([&] { return element("/PLC/\u00FC") != nullptr; }));
    const auto line = QStringLiteral("%1: names that are not UTF-8 were read as Windows-1252: 1 in "
                                     "this data block, the first is “%1”");
    const auto guessed =
        QStringLiteral("three.db:1:12: 4 block numbers are not in the file and were "
                       "guessed: “ä” got 1, “plain” got 2, “ö” got 3, “ü” got 4");
    EXPECT_TRUE(notice().endsWith(" 4 warnings, the first: " + guessed)) << qPrintable(notice());
    const auto buttons = child<NoticeBar>().findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_EQ(buttons.front()->text(), "Show all");
    QTest::mouseClick(buttons.front(), Qt::LeftButton);
    const auto& shownLines = child<QPlainTextEdit>();
    EXPECT_TRUE(shownLines.isVisible());
    EXPECT_EQ(shownLines.window()->windowTitle(), "4 warnings");
    EXPECT_EQ(shownLines.toPlainText(), guessed + "\n" + line.arg(QChar(0xE4)) + "\n" +
                                            line.arg(QChar(0xF6)) + "\n" + line.arg(QChar(0xFC)));
}

TEST_F(GuiTest, TheButtonThatWasPressedReadsTheFileWhateverItIsCalled) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    const auto source = readFile(example("bottling-line.db"));
    for (const char* const name : {"line.txt", "line", "line.json", "line.DB"}) {
        select("/PLC");
        dialogs_.fileToImport = writeFile(name, source);
        QTest::mouseClick(field<QPushButton>("Import DB File"), Qt::LeftButton);
        EXPECT_TRUE(settleUntil([&] { return element("/PLC/Line/Enabled") != nullptr; }))
            << name << " " << qPrintable(notice());
        trigger(Command::undo);
    }
}

TEST_F(GuiTest, AFileDroppedOnAnEmptyWindowMakesItsElement) {
    importExample();
    EXPECT_TRUE(window().isWindowModified());
    EXPECT_EQ(child<TreePanel>().selected().size(),
              session().root().childElements()[0]->childElements().size());
}

TEST_F(GuiTest, AFileCanBeDroppedOnEveryPartOfTheWindow) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    // Looked for each time: an import makes the form anew.
    const std::array<std::function<QWidget*()>, 5> parts{
        [this] { return tree().viewport(); }, [this] { return field("Address"); },
        [this] { return &child<QWidget>("treeFilter"); }, [this] { return problems().viewport(); },
        [this] { return &child<QWidget>("formPanel"); }};
    for (const auto& part : parts) {
        select("/PLC");
        ASSERT_NE(part(), nullptr);
        dropFile(*part(), example("bottling-line.db"));
        EXPECT_NE(element("/PLC/Line"), nullptr) << &part - parts.data();
        trigger(Command::undo);
        EXPECT_EQ(element("/PLC/Line"), nullptr);
    }
}

TEST_F(GuiTest, AFileThatCannotBeImportedLeavesNoElementBehind) {
    window().openFiles({writeFile("broken.db", "DATA_BLOCK \"x\" STRUCT a : Nonsense;")});
    settle();
    EXPECT_TRUE(session().isEmpty());
    EXPECT_FALSE(notice().isEmpty());
    window().openFiles({writeFile("notes.txt", "hello")});
    settle();
    EXPECT_TRUE(session().isEmpty());
    EXPECT_EQ(notice(), QStringLiteral("No loaded plug-in imports “.txt” files."));
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(GuiTest, AFileThatCannotBeImportedLeavesTheHistoryAlone) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    trigger(Command::undo);
    const auto redoBefore = action(Command::redo).text();
    window().openFiles({writeFile("broken.db", "DATA_BLOCK \"x\" STRUCT a : Nonsense;")});
    settle();
    EXPECT_FALSE(notice().isEmpty());
    EXPECT_EQ(action(Command::redo).text(), redoBefore);
    EXPECT_FALSE(action(Command::undo).isEnabled());
    trigger(Command::redo);
    window().openFiles({writeFile("notes.txt", "hello")});
    settle();
    EXPECT_FALSE(action(Command::redo).isEnabled());
}

TEST_F(GuiTest, WhereSeveralElementsImportTheUserIsAsked) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    addFromMenu("addButton", QStringLiteral("S7 Compatible PLC"));
    press(Qt::Key_Return);
    tree().setCurrentIndex({});
    dialogs_.choice = QStringLiteral("/PLC 2");
    window().openFiles({example("bottling-line.db")});
    settle();
    EXPECT_EQ(dialogs_.offered, QStringList({"/PLC", "/PLC 2"}));
    EXPECT_NE(element("/PLC 2/Line"), nullptr);
    EXPECT_TRUE(element("/PLC")->childElements().empty());
}

} // namespace corvane::workbench::gui
