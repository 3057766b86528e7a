#include "GuiTesting.hpp"

#include "workbench/core/files/FileLock.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"
#include "workbench/gui/window/NativeDialogs.hpp"

#include <QMessageBox>
#include <QProcess>
#include <QSplitter>

namespace corvane::workbench::gui {

namespace {

class FilesTest : public GuiTest {
protected:
    QString saved(const char* file) {
        if (session().isEmpty())
            addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
        dialogs_.projectToSave = path(file);
        trigger(Command::saveProjectAs);
        return path(file);
    }
};

} // namespace

TEST_F(FilesTest, NothingUnsavedIsLostWithoutAQuestion) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    EXPECT_TRUE(window().isWindowModified());

    dialogs_.unsaved = Dialogs::Unsaved::cancel;
    trigger(Command::newProject);
    EXPECT_EQ(dialogs_.unsavedAsked, 1);
    EXPECT_NE(element("/PLC"), nullptr);
    window().close();
    settle();
    EXPECT_TRUE(window().isVisible());

    dialogs_.unsaved = Dialogs::Unsaved::save;
    dialogs_.projectToSave = path("kept.json");
    trigger(Command::newProject);
    EXPECT_TRUE(session().isEmpty());
    EXPECT_TRUE(readFile(path("kept.json")).contains("@Skill.S7.PLC"));

    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    window().close();
    settle();
    EXPECT_FALSE(window().isVisible());
}

TEST_F(FilesTest, ASaveThatIsThoughtBetterOfKeepsTheWindow) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    dialogs_.unsaved = Dialogs::Unsaved::save;
    dialogs_.projectToSave.clear();
    trigger(Command::newProject);
    EXPECT_NE(element("/PLC"), nullptr);
}

TEST_F(FilesTest, ABrokenFileIsReportedAndTheProjectStays) {
    saved("good.json");
    window().openFiles({writeFile("broken.json", "{\"corvane\":1,")});
    settle();
    EXPECT_TRUE(notice().startsWith(path("broken.json"))) << qPrintable(notice());
    EXPECT_NE(element("/PLC"), nullptr);
    EXPECT_TRUE(window().windowTitle().startsWith("good.json"));
}

TEST_F(FilesTest, AFileThatChangedOnDiskIsToldOfAndReadAgain) {
    saved("shared.json");
    auto content = readFile(path("shared.json"));
    writeFile("shared.json", content.replace("\"PLC\"", "\"Renamed\""));
    ASSERT_TRUE(settleUntil([&] { return notice().contains("changed by another program"); }));
    clickNotice("Read It Again");
    EXPECT_TRUE(settleUntil([&] { return element("/Renamed") != nullptr; }));
}

TEST_F(FilesTest, ReadingAgainWithUnsavedWorkLosesItOnlyByWord) {
    const auto changed = [&] { return notice().contains("changed by another program"); };
    saved("shared.json");
    select("/PLC");
    type("Address", "10.0.0.1");
    writeFile("shared.json", readFile(path("shared.json")).replace("\"PLC\"", "\"Renamed\""));
    ASSERT_TRUE(settleUntil(changed));

    clickNotice("Read It Again");
    EXPECT_EQ(dialogs_.asked.size(), 1);
    EXPECT_EQ(dialogs_.unsavedAsked, 0);
    EXPECT_NE(element("/PLC"), nullptr);
    EXPECT_TRUE(changed());

    // What is told in between does not take the warning away.
    session().rename(*element("/PLC"), QString());
    EXPECT_FALSE(changed());
    session().rename(*element("/PLC"), QStringLiteral("Mine"));
    EXPECT_TRUE(changed());

    dialogs_.answer = QStringLiteral("Save As…");
    dialogs_.projectToSave = path("mine.json");
    clickNotice("Read It Again");
    ASSERT_TRUE(settleUntil([&] { return element("/Renamed") != nullptr; }));
    EXPECT_TRUE(readFile(path("mine.json")).contains("10.0.0.1"));
    EXPECT_TRUE(window().windowTitle().startsWith("shared.json"));
    EXPECT_EQ(notice(), "");
}

TEST_F(FilesTest, ReadingAgainDiscardsUnsavedWorkByWord) {
    saved("shared.json");
    select("/PLC");
    type("Address", "10.0.0.1");
    writeFile("shared.json", readFile(path("shared.json")).replace("\"PLC\"", "\"Renamed\""));
    ASSERT_TRUE(settleUntil([&] { return notice().contains("changed by another program"); }));
    dialogs_.answer = QStringLiteral("Discard and Read");
    clickNotice("Read It Again");
    ASSERT_TRUE(settleUntil([&] { return element("/Renamed") != nullptr; }));
    EXPECT_FALSE(window().isWindowModified());
    EXPECT_EQ(notice(), "");
}

// Another program that holds the file's lock changes it after the window has looked at it.
TEST_F(FilesTest, AFileThatChangesWhileItIsSavedIsNotOverwrittenUnasked) {
    saved("shared.json");
    select("/PLC");
    type("Address", "10.0.0.1");
    dialogs_.agree = false;
    auto lock = std::optional(core::FileLock::acquire(toUtf8(path("shared.json"))));
    action(Command::saveProject).trigger();
    ASSERT_TRUE(session().isBusy());
    writeFile("shared.json", "something else");
    lock.reset();
    ASSERT_TRUE(settleUntil([&] { return !dialogs_.confirmed.isEmpty(); }));
    settle();
    EXPECT_EQ(readFile(path("shared.json")), "something else");
    EXPECT_TRUE(window().isWindowModified());
    dialogs_.agree = true;
    trigger(Command::saveProject);
    EXPECT_TRUE(readFile(path("shared.json")).contains("10.0.0.1"));
}

TEST_F(FilesTest, AFileThatChangedOnDiskIsNotOverwrittenUnasked) {
    saved("shared.json");
    select("/PLC");
    type("Address", "10.0.0.1");
    writeFile("shared.json", "something else");
    dialogs_.agree = false;
    trigger(Command::saveProject);
    EXPECT_EQ(dialogs_.confirmed.size(), 1);
    EXPECT_EQ(readFile(path("shared.json")), "something else");
    EXPECT_TRUE(window().isWindowModified());
    dialogs_.agree = true;
    trigger(Command::saveProject);
    EXPECT_TRUE(readFile(path("shared.json")).contains("10.0.0.1"));
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(FilesTest, UndoingToTheSavedStateTakesTheMarkAway) {
    saved("mark.json");
    select("/PLC");
    type("Address", "10.0.0.1");
    EXPECT_TRUE(window().isWindowModified());
    trigger(Command::undo);
    EXPECT_FALSE(window().isWindowModified());
}

TEST_F(FilesTest, ProjectsAndLayoutAreRemembered) {
    saved("first.json");
    saved("second.json");
    EXPECT_EQ(settings::recentProjects(), QStringList({path("second.json"), path("first.json")}));
    window().resize(1000, 700);
    auto& across = *child<TreePanel>().parentWidget();
    auto* const splitter = qobject_cast<QSplitter*>(&across);
    ASSERT_NE(splitter, nullptr);
    splitter->setSizes({400, 600});
    const auto sizes = splitter->sizes();
    window().close();
    settle();
    reopenWindow();
    EXPECT_EQ(window().size(), QSize(1000, 700));
    window().openFiles({path("first.json")});
    settle();
    EXPECT_EQ(qobject_cast<QSplitter*>(child<TreePanel>().parentWidget())->sizes(), sizes);
}

TEST_F(FilesTest, UnsavedWorkSurvivesACrash) {
    const int status =
        QProcess::execute(QCoreApplication::applicationFilePath(), {"--crash", path("recovery")});
    ASSERT_EQ(status, 1);
    dialogs_.answer = QStringLiteral("Recover");
    window().offerRecovery();
    ASSERT_TRUE(settleUntil([&] { return element("/PLC") != nullptr; }));
    EXPECT_EQ(dialogs_.asked.size(), 1);
    EXPECT_TRUE(window().isWindowModified());
    window().offerRecovery(); // once is enough
    settle();
    EXPECT_EQ(dialogs_.asked.size(), 1);
}

// It takes a while until a large project stands, and only then its work is kept anew.
TEST_F(FilesTest, UnsavedWorkOfALargeProjectSurvivesASecondCrash) {
    ASSERT_TRUE(QDir().mkpath(path("recovery")));
    const auto left = writeFile("recovery/left.json", largeProject());
    dialogs_.answer = QStringLiteral("Recover");
    window().offerRecovery();
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    const auto kept = QDir(path("recovery")).entryInfoList({"*.json"}, QDir::Files);
    ASSERT_EQ(kept.size(), 1);
    EXPECT_NE(kept.front().absoluteFilePath(), left);
    EXPECT_TRUE(readFile(kept.front().absoluteFilePath()).contains("\"i29999\""));
}

TEST_F(FilesTest, UnsavedWorkThatIsNotWantedIsGone) {
    ASSERT_EQ(
        QProcess::execute(QCoreApplication::applicationFilePath(), {"--crash", path("recovery")}),
        1);
    dialogs_.answer = QStringLiteral("Discard");
    window().offerRecovery();
    settle();
    EXPECT_TRUE(session().isEmpty());
    EXPECT_TRUE(QDir(path("recovery")).entryList(QDir::Files).isEmpty());
}

namespace {

/// Answers the dialog that the window shows with a key, as a hurried user does; what it says.
QString offerRecoveryAndPress(MainWindow& window, Qt::Key key) {
    QString text;
    QTimer::singleShot(100, &window, [&text, key] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        QTest::keyClick(box, key);
    });
    window.offerRecovery();
    return text;
}

} // namespace

TEST_F(FilesTest, NoKeyPressedInHasteDestroysUnsavedWork) {
    ASSERT_TRUE(QDir().mkpath(path("recovery")));
    const auto left = writeFile("recovery/left.json",
                                R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"Kept"}}]})");
    QFile file(left);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime({2026, 3, 9}, {14, 30}), QFile::FileModificationTime));
    file.close();
    const auto before = readFile(left);
    NativeDialogs native;
    MainWindow started(plugins_, native, path("recovery"));
    started.show();
    const auto text = offerRecoveryAndPress(started, Qt::Key_Escape);
    EXPECT_TRUE(started.session().isEmpty());
    EXPECT_EQ(readFile(left), before);
    EXPECT_TRUE(text.contains(formatted(QDateTime({2026, 3, 9}, {14, 30})))) << qPrintable(text);
    EXPECT_TRUE(text.contains("2026")) << qPrintable(text);

    offerRecoveryAndPress(started, Qt::Key_Return);
    EXPECT_NE(started.session().project().model().findElement("/Kept"), nullptr);
    EXPECT_FALSE(QFile::exists(left));
}

TEST_F(FilesTest, AProgramThatEndsInGoodOrderLeavesNothingBehind) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    window().recovery().keepNow();
    EXPECT_FALSE(QDir(path("recovery")).entryList({"*.json"}, QDir::Files).isEmpty());
    window_.reset();
    EXPECT_TRUE(QDir(path("recovery")).entryList(QDir::Files).isEmpty());
    reopenWindow();
    window().offerRecovery();
    EXPECT_TRUE(dialogs_.asked.isEmpty());
}

TEST_F(FilesTest, TheThemeIsChangedAtOnceAndRemembered) {
    trigger(Command::themeDark);
    EXPECT_TRUE(isDark(window().palette()));
    EXPECT_EQ(settings::theme(), Theme::dark);
    trigger(Command::themeLight);
    EXPECT_FALSE(isDark(window().palette()));
}

} // namespace corvane::workbench::gui
