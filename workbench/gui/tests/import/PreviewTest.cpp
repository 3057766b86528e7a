// What the user is shown of an import before anything is touched.
#include "GuiTesting.hpp"

#include "workbench/gui/fields/UnsignedSpinBox.hpp"
#include "workbench/gui/preview/ImportPreviewDialog.hpp"

#include <QAbstractItemModelTester>
#include <QCheckBox>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeView>

namespace corvane::workbench::gui {

namespace {

/// A project of a plant, and the same plant's file after a week.
class PreviewTest : public GuiTest {
public:
    PreviewTest() {
        runCommandLine({"import", writeFile("old.db", oldSource), "--project", path("P.json")});
        runCommandLine({"add", path("P.json"), "/PLC", "Command", "Fast"});
        runCommandLine({"set", path("P.json"), "/PLC/Line/Last", "Command=/PLC/Fast"});
        writeFile("new.db", newSource);
        before = readFile(path("P.json"));
        window().openFiles({path("P.json")});
        settle();
    }

    void drop(const char* file) {
        select("/PLC");
        dropFile(*window_, path(file));
    }

    ImportPreviewDialog* dialog() {
        for (auto* const one : window_->findChildren<ImportPreviewDialog*>())
            if (one->isVisible())
                return one;
        return nullptr;
    }

    template <class Widget>
    Widget& part(const char* name) {
        return *dialog()->findChild<Widget*>(QString::fromLatin1(name));
    }

    void click(const char* name) {
        QTest::mouseClick(&part<QAbstractButton>(name), Qt::LeftButton, Qt::NoModifier, {5, 8});
        settle();
    }

    /// The rows as the command line prints them.
    QString listed() {
        const QStringList kinds{"added", "updated", "moved", "renamed", "removed", "missing"};
        QString text;
        const auto& model = *part<QTreeView>("importChanges").model();
        for (int group = 0; group != model.rowCount(); ++group) {
            const auto top = model.index(group, 0);
            for (int row = 0; row != model.rowCount(top); ++row) {
                const auto change = model.index(row, 0, top);
                const auto* const known = static_cast<const ChangesModel&>(model).changeAt(change);
                text += kinds[static_cast<qsizetype>(known->change)].leftJustified(9) +
                        change.data().toString() + "\n";
                for (int member = 0; member != model.rowCount(change); ++member)
                    text += QString(11, ' ') + at(model, member, 0, change) + ": " +
                            at(model, member, 1, change) + " -> " + at(model, member, 2, change) +
                            "\n";
            }
        }
        return text;
    }

    static QString at(const QAbstractItemModel& model, int row, int column,
                      const QModelIndex& parent) {
        return model.index(row, column, parent).data().toString();
    }

    /// What the command line says that the import would change, line by line.
    QString dryRun(const QStringList& more = {}) {
        const auto text =
            QString::fromUtf8(runCommandLine(QStringList{"import", path("new.db"), "--project",
                                                         path("P.json"), "--dry-run", "--verbose"} +
                                             more));
        return text.mid(text.indexOf('\n') + 1);
    }

    void save() {
        dialogs_.projectToSave = path("saved.json");
        trigger(Command::saveProjectAs);
    }

    const QByteArray oldSource =
        dataBlock("Line", "Speed : Int; Level : Real; Name : String[20]; "
                          "Motor : Struct Run : Bool; Temp : Int; END_STRUCT; "
                          "Temps : Array[0..1] of Real; Gone : Word; "
                          "Old : Struct a : Bool; END_STRUCT; Last : Int;") +
        dataBlock("Valve", "Open : Bool; Pressure : Real;");
    // A member in front, another type, a renamed one, a longer text, one more in a structure, a
    // longer array, two that are gone, one that is read-only, one that is hidden, a new block.
    const QByteArray newSource =
        dataBlock("Line", "Extra : DInt; Speed : UInt; Height : Real; Name : String[40]; "
                          "Motor : Struct Run : Bool; Temp : Int; Amps : Real; END_STRUCT; "
                          "Temps : Array[0..2] of Real; "
                          "Last { ExternalWritable := 'False' } : Int;") +
        dataBlock("Valve", "Open : Bool; Pressure { ExternalAccessible := 'False' } : Real;") +
        dataBlock("New", "n : Int;");
    QByteArray before;
};

} // namespace

TEST_F(PreviewTest, ItNamesExactlyWhatTheDryRunNames) {
    drop("new.db");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), "Import new.db into /PLC");
    EXPECT_EQ(listed(), dryRun());
    EXPECT_EQ(part<QLabel>("importSummary").text(),
              "11 added, 2 updated, 10 no longer in the file, 4 unchanged");

    click("byName");
    EXPECT_EQ(listed(), dryRun({"--match", "name"}));
    click("removeMissing");
    EXPECT_EQ(listed(), dryRun({"--match", "name", "--remove-missing"}));
    EXPECT_EQ(part<QLabel>("importSummary").text(), "6 added, 7 moved, 5 removed, 4 unchanged");

    click("importNow");
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_TRUE(notice().startsWith(
        "Imported new.db into /PLC: 6 elements added, 0 updated, 7 moved, 5 removed; "))
        << qPrintable(notice());
    runCommandLine({"import", path("new.db"), "--project", path("P.json"), "--match", "name",
                    "--remove-missing"});
    save();
    EXPECT_EQ(readFile(path("saved.json")), readFile(path("P.json")));
    trigger(Command::undo);
    save();
    EXPECT_EQ(readFile(path("saved.json")), before);
}

TEST_F(PreviewTest, NamesThatMisleadComeFirst) {
    drop("new.db");
    ASSERT_TRUE(part<QWidget>("misleadingNames").isVisible());
    EXPECT_TRUE(part<QWidget>("misleadingNames")
                    .findChildren<QLabel*>()
                    .back()
                    ->text()
                    .startsWith("/PLC/Line/Speed: keeps its name, but the file calls it “Extra”"));
    EXPECT_TRUE(part<QPlainTextEdit>("importWarnings")
                    .toPlainText()
                    .contains("/PLC/Line/Motor/Run 2: got this name"));
    click("matchByName");
    EXPECT_TRUE(part<QRadioButton>("byName").isChecked());
    EXPECT_FALSE(part<QWidget>("misleadingNames").isVisible());
    EXPECT_EQ(listed(), dryRun({"--match", "name"}));
}

TEST_F(PreviewTest, CancelLeavesAllAsItWas) {
    select("/PLC/Line/Motor/Temp");
    dropFile(*window_, path("new.db"));
    click("byName");
    click("removeMissing");
    QTest::keyClick(dialog(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(session().isModified());
    EXPECT_FALSE(action(Command::undo).isEnabled());
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Motor/Temp"));
    EXPECT_EQ(shown("Effective address"), "DB1.DB30");
    save();
    EXPECT_EQ(readFile(path("saved.json")), before);
}

TEST_F(PreviewTest, AFileThatChangesNothingIsNotAskedFor) {
    drop("old.db");
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(notice(), "old.db changes nothing in /PLC: 16 unchanged.");
    EXPECT_FALSE(session().isModified());

    writeFile("part.db", dataBlock("Valve", "Open : Bool;"));
    drop("part.db");
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_EQ(notice(), "part.db changes nothing in /PLC: 2 unchanged, 1 no longer in the file.");
    clickNotice("Look Closer");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(listed(), "missing  /PLC/Valve/Pressure\n");
    click("removeMissing");
    click("importNow");
    EXPECT_EQ(element("/PLC/Valve/Pressure"), nullptr);
    EXPECT_NE(element("/PLC/Line/Level"), nullptr) << "the file does not declare the block";
}

TEST_F(PreviewTest, AGuessedNumberIsCorrectedOnTheSpot) {
    drop("new.db");
    auto& form = part<QWidget>("newElementForm");
    auto* const number = form.findChild<UnsignedSpinBox*>();
    ASSERT_NE(number, nullptr) << "the new block is shown first";
    EXPECT_EQ(number->value(), 3U);
    number->selectAll();
    QTest::keyClicks(number, QStringLiteral("12"));
    // What was entered is shown before it is imported.
    click("importNow");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_FALSE(part<QLabel>("previewStatus").text().isEmpty());
    EXPECT_EQ(element("/PLC/New"), nullptr);
    click("importNow");
    ASSERT_NE(element("/PLC/New/n"), nullptr);
    select("/PLC/New/n");
    EXPECT_EQ(shown("Effective address"), "DB12.DB0");
    select("/PLC/New");
    EXPECT_EQ(field<UnsignedSpinBox>("DB number")->value(), 12U);
}

TEST_F(PreviewTest, ANumberThatIsTakenShowsWhatThatDoes) {
    writeFile("third.db", dataBlock("Third", "t : Int;"));
    drop("third.db");
    const auto enter = [&](const char* text) {
        auto* const number = part<QWidget>("newElementForm").findChild<UnsignedSpinBox*>();
        number->setFocus();
        number->selectAll();
        QTest::keyClicks(number, QString::fromLatin1(text));
        QTest::keyClick(number, Qt::Key_Return);
        settle();
    };
    const QString fresh = "added    /PLC/Third\nadded    /PLC/Third/t\n";
    EXPECT_EQ(listed(), fresh);
    enter("2"); // the number of Valve, whose place it would take
    EXPECT_EQ(listed(), "added    /PLC/Third/t\n"
                        "renamed  /PLC/Third\n"
                        "missing  /PLC/Third/Open\n"
                        "missing  /PLC/Third/Pressure\n");
    enter("12"); // the form is still there
    EXPECT_EQ(listed(), fresh);
}

TEST_F(PreviewTest, SeveralFilesAreAskedForOneAfterTheOther) {
    writeFile("third.db", dataBlock("Third", "t : Int;"));
    select("/PLC");
    window().openFiles({path("new.db"), path("third.db")});
    settle();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), "Import new.db into /PLC");
    EXPECT_EQ(window_->findChildren<ImportPreviewDialog*>().size(), 1);
    QTest::keyClick(dialog(), Qt::Key_Escape);
    settle();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), "Import third.db into /PLC");
    click("importNow");
    EXPECT_EQ(element("/PLC/New"), nullptr);
    EXPECT_NE(element("/PLC/Third/t"), nullptr);
}

TEST_F(PreviewTest, TheFilterGoesByThePath) {
    drop("new.db");
    auto& filter = part<QLineEdit>("changesFilter");
    auto& view = part<QTreeView>("importChanges");
    const QAbstractItemModelTester tester(view.model(),
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    QTest::keyClicks(&filter, QStringLiteral("motor/t"));
    ASSERT_TRUE(settleUntil([&] { return view.model()->rowCount() == 2; }));
    EXPECT_EQ(view.model()->index(0, 0).data(), "Added (1 of 11)");
    EXPECT_EQ(view.model()->index(1, 0).data(), "No longer in the file (1 of 10)");
    EXPECT_EQ(listed(), "added    /PLC/Line/Motor/Temp 2\nmissing  /PLC/Line/Motor/Temp\n");
    QTest::keyClick(&filter, Qt::Key_Return);
    ASSERT_NE(dialog(), nullptr) << "Enter leads to the list";
    EXPECT_TRUE(view.hasFocus());
    filter.clear();
    EXPECT_TRUE(settleUntil([&] { return view.model()->rowCount() == 3; }));
    EXPECT_EQ(listed(), dryRun());
}

TEST_F(PreviewTest, WhoDoesNotWantToWaitStopsIt) {
    const auto stopping = QObject::connect(&session().runner(), &BusyRunner::preparing, &session(),
                                           [this] { session().runner().stop(); });
    // A job that follows a slow one is not told of: then it is not stopped in time.
    for (int i = 0; i != 20 && !notice().contains("nothing has changed"); ++i) {
        drop("new.db");
        if (auto* const asking = dialog()) {
            asking->reject();
            settle();
        }
    }
    EXPECT_TRUE(notice().contains("nothing has changed")) << qPrintable(notice());
    QObject::disconnect(stopping);
    save();
    EXPECT_EQ(readFile(path("saved.json")), before);
    drop("new.db");
    EXPECT_NE(dialog(), nullptr);
}

TEST_F(PreviewTest, TheWindowMayGoWhileItAsks) {
    drop("new.db");
    ASSERT_NE(dialog(), nullptr);
    reopenWindow();
    EXPECT_EQ(dialog(), nullptr);
}

TEST(ChangesModelTest, ManyChangesAreOnlyAList) {
    constexpr int kMany = 100'000;
    auto preview = std::make_shared<core::ImportPreview>();
    for (int i = 0; i != kMany; ++i)
        preview->changes.push_back({core::ImportedElement::Change::changed,
                                    "/PLC/B/i" + std::to_string(i),
                                    std::nullopt,
                                    {{"address", "\"DB0\"", "\"DB2\""}},
                                    std::nullopt});
    ChangesModel model(nullptr);
    model.setChanges(preview);
    const auto top = model.index(0, 0);
    EXPECT_EQ(model.rowCount(top), kMany);
    const auto last = model.index(kMany - 1, 0, top);
    EXPECT_EQ(last.data(), "/PLC/B/i99999");
    EXPECT_EQ(model.parent(model.index(0, 0, last)), last);
    model.setFilter(QStringLiteral("I9999"));
    EXPECT_EQ(model.rowCount(model.index(0, 0)), 11);
    model.setFilter(QStringLiteral("nowhere"));
    EXPECT_EQ(model.rowCount(), 0);
}

} // namespace corvane::workbench::gui
