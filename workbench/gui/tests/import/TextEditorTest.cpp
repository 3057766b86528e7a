// The user's editor, and the way from a refused file to it.
#include "GuiTesting.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"
#include "workbench/gui/session/TextEditor.hpp"

#include "UrlOpener.hpp"

#include <QFile>
#include <QPlainTextEdit>

namespace corvane::workbench::gui {

namespace {

class TextEditorTest : public GuiTest {
protected:
    /// Drops a file with a fault in its second line.
    void dropBroken() {
        dropFile(*window_, writeFile("a b.db", "DATA_BLOCK \"x\"\n"
                                               "{ S7_Optimized_Access := 'TRUE' }\n"));
    }

    /// A program that writes its arguments into a file, a line each.
    QString makeEditor() {
        const auto program =
            writeFile("my editor", "#!/bin/sh\nfor word; do echo \"$word\"; done > \"$0.tmp\"\n"
                                   "mv \"$0.tmp\" \"$0.out\"\n");
        EXPECT_TRUE(QFile::setPermissions(program, QFile::ReadOwner | QFile::ExeOwner));
        return program;
    }
};

} // namespace

TEST(EditorCallTest, FillsInThePlaceWithoutAShell) {
    const TextPlace place{QStringLiteral("/a b/{line} $HOME;'x.db"), 12, 3};
    struct Case {
        std::string_view command;
        QStringList call;
    };
    const Case cases[] = {
        {"", {}},
        {"ed {file}", {"ed", place.file}},
        {"ed +{line}:{column} {file}", {"ed", "+12:3", place.file}},
        {"\"my ed\" --at={file}:{line}", {"my ed", "--at=" + place.file + ":12"}},
        {"ed {File} {} {{line}} $HOME {file}", {"ed", "{File}", "{}", "{12}", "$HOME", place.file}},
    };
    for (const auto& [command, call] : cases)
        EXPECT_EQ(editorCall(toQt(command), place), call) << command;
}

TEST(EditorCallTest, WhatWouldOpenNothingIsObjectedTo) {
    for (const char* const good : {"", "   ", "ed {file}", "ed -l {line} \"{file}\""})
        EXPECT_EQ(objectionTo(QString::fromLatin1(good)), "") << good;
    for (const char* const bad : {"ed", "ed {line}", "{file}", "\"\" {file}"})
        EXPECT_NE(objectionTo(QString::fromLatin1(bad)), "") << bad;
}

TEST_F(TextEditorTest, WithoutACommandTheSystemOpensTheFile) {
    UrlOpener system;
    dropBroken();
    clickNotice("Open in Editor");
    EXPECT_EQ(system.opened, QList<QUrl>{QUrl::fromLocalFile(path("a b.db"))});
    clickNotice("Show Place"); // both stay
}

TEST_F(TextEditorTest, TheUsersCommandOpensItAtThePlace) {
    UrlOpener system;
    dialogs_.entered = "\"" + makeEditor() + "\" --line {line} --column {column} {file}";
    trigger(Command::chooseEditor);
    EXPECT_EQ(dialogs_.entries, QStringList{""});
    dropBroken();
    clickNotice("Open in Editor");
    const auto written = path("my editor.out");
    ASSERT_TRUE(settleUntil([&] { return QFile::exists(written); }));
    EXPECT_EQ(readFile(written), "--line\n2\n--column\n26\n" + path("a b.db").toUtf8() + "\n");
    EXPECT_TRUE(system.opened.isEmpty());

    // It is kept, and can be given up.
    reopenWindow();
    dialogs_.entered = QString();
    trigger(Command::chooseEditor);
    EXPECT_EQ(settings::editorCommand(), "");
    dropBroken();
    clickNotice("Open in Editor");
    EXPECT_EQ(system.opened.size(), 1);
}

TEST_F(TextEditorTest, ABadCommandIsRefusedAndAMissingProgramTold) {
    dialogs_.entered = QStringLiteral("editor");
    trigger(Command::chooseEditor);
    EXPECT_TRUE(notice().contains("{file}")) << qPrintable(notice());
    EXPECT_EQ(settings::editorCommand(), "");
    dialogs_.entered = "\"" + path("no such program") + "\" {file}";
    trigger(Command::chooseEditor);
    dialogs_.entered = std::nullopt;
    trigger(Command::chooseEditor);
    EXPECT_TRUE(settings::editorCommand().contains("no such program"));
    dropBroken();
    const auto reason = notice();
    clickNotice("Open in Editor");
    EXPECT_TRUE(child<QPlainTextEdit>().toPlainText().contains("No program could be started"));
    EXPECT_EQ(notice(), reason);
}

} // namespace corvane::workbench::gui
