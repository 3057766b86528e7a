#include "GuiTesting.hpp"

#include "workbench/gui/session/Settings.hpp"

#include <QProcess>
#include <QPushButton>
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
    for (auto* const button : child<NoticeBar>().findChildren<QPushButton*>())
        QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(settleUntil([&] { return element("/Renamed") != nullptr; }));
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
    dialogs_.agree = true;
    window().offerRecovery();
    ASSERT_TRUE(settleUntil([&] { return element("/PLC") != nullptr; }));
    EXPECT_EQ(dialogs_.confirmed.size(), 1);
    EXPECT_TRUE(window().isWindowModified());
    window().offerRecovery(); // once is enough
    settle();
    EXPECT_EQ(dialogs_.confirmed.size(), 1);
}

// It takes a while until a large project stands, and only then its work is kept anew.
TEST_F(FilesTest, UnsavedWorkOfALargeProjectSurvivesASecondCrash) {
    ASSERT_TRUE(QDir().mkpath(path("recovery")));
    const auto left = writeFile("recovery/left.json", largeProject());
    dialogs_.agree = true;
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
    dialogs_.agree = false;
    window().offerRecovery();
    settle();
    EXPECT_TRUE(session().isEmpty());
    EXPECT_TRUE(QDir(path("recovery")).entryList(QDir::Files).isEmpty());
}

TEST_F(FilesTest, AProgramThatEndsInGoodOrderLeavesNothingBehind) {
    addFromMenu("startAdd", QStringLiteral("S7 Compatible PLC"));
    window().recovery().keepNow();
    EXPECT_FALSE(QDir(path("recovery")).entryList({"*.json"}, QDir::Files).isEmpty());
    window_.reset();
    EXPECT_TRUE(QDir(path("recovery")).entryList(QDir::Files).isEmpty());
    reopenWindow();
    window().offerRecovery();
    EXPECT_TRUE(dialogs_.confirmed.isEmpty());
}

TEST_F(FilesTest, TheThemeIsChangedAtOnceAndRemembered) {
    trigger(Command::themeDark);
    EXPECT_TRUE(isDark(window().palette()));
    EXPECT_EQ(settings::theme(), Theme::dark);
    trigger(Command::themeLight);
    EXPECT_FALSE(isDark(window().palette()));
}

} // namespace corvane::workbench::gui
