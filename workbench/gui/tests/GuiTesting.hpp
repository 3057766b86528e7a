#pragma once

#include "workbench/gui/window/MainWindow.hpp"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>

class QLabel;

namespace corvane::workbench::gui {

/// Answers the window's questions as a test has decided beforehand, and notes what was asked.
class ScriptedDialogs final : public Dialogs {
public:
    QString chooseProjectToOpen(QWidget*) override { return projectToOpen; }
    QString chooseProjectToSave(QWidget*, const QString& suggestion) override {
        suggested = suggestion;
        return projectToSave;
    }
    QString chooseFileToImport(QWidget*, const QString& title, const QString& extension) override {
        askedTitle = title;
        askedExtension = extension;
        return fileToImport;
    }
    Unsaved askUnsaved(QWidget*, const QString&) override {
        ++unsavedAsked;
        return unsaved;
    }
    bool confirm(QWidget*, const Question& question) override {
        confirmed += question.text;
        return agree;
    }
    int choose(QWidget*, const Choice& question) override {
        asked += question.text;
        const auto given = question.answers.indexOf(answer);
        return given < 0 ? question.onEscape : static_cast<int>(given);
    }
    std::optional<QString> enterText(QWidget*, const Entry& entry) override {
        entries += entry.value;
        return entered;
    }
    QString chooseOne(QWidget*, const QString&, const QString&,
                      const QStringList& choices) override {
        offered = choices;
        return choice;
    }

    QString projectToOpen;
    QString projectToSave;
    QString fileToImport;
    QString choice;
    QString answer; // Escape where a question does not offer it
    Unsaved unsaved = Unsaved::cancel;
    bool agree = false;
    std::optional<QString> entered;

    QString suggested;
    QString askedTitle;
    QString askedExtension;
    int unsavedAsked = 0;
    QStringList confirmed;
    QStringList asked;
    QStringList offered;
    QStringList entries; // what texts to be entered began with
};

/// A window under test, driven by keys and clicks, with the real plug-in.
class GuiTest : public testing::Test {
public:
    ~GuiTest() override;

protected:
    GuiTest();

    [[nodiscard]] MainWindow& window() { return *window_; }
    [[nodiscard]] ProjectSession& session() { return window_->session(); }
    void reopenWindow();

    /// Lets everything under way come to its end.
    void settle();
    /// Whether the window does something that events alone do not end.
    bool isAtWork();
    /// As `settle`, until the condition holds; false if it does not within some seconds.
    bool settleUntil(const std::function<bool()>& condition);

    [[nodiscard]] QString path(const char* file) const { return folder_.filePath(file); }
    QString writeFile(const char* file, const QByteArray& content) const;
    static QByteArray readFile(const QString& file);
    /// A project that is worked on beside the window: "/P/B/i0" to "/P/B/i29999".
    static QByteArray largeProject();
    static QString example(const char* file);
    /// What the command line prints on standard output; it is expected to succeed.
    static QByteArray runCommandLine(const QStringList& arguments);
    /// The source of a data block with these declarations.
    static QByteArray dataBlock(const char* name, const QByteArray& declarations = "x : Bool;");

    QAction& action(Command command);
    void trigger(Command command);
    /// Presses a key where the keyboard is.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// Presses the button that opens the menu of new elements and chooses one by its text.
    void addFromMenu(const char* button, const QString& text);
    /// The texts that the menu of new elements offers now.
    QStringList offeredByAddMenu();

    [[nodiscard]] model::Element* element(const char* elementPath);
    void select(const char* elementPath);
    /// The widget of the shown form's field with this label; null if there is none.
    template <class Widget = QWidget>
    Widget* field(const char* label) {
        auto* const row = rowOf(label);
        return row == nullptr ? nullptr : dynamic_cast<Widget*>(&row->field().widget());
    }
    /// The row of the shown form with this label, the first one if there are several; null if there
    /// is none.
    FormRow* rowOf(const char* label);
    /// The error shown at a field; empty for none.
    QString errorAt(const char* label);
    const QLabel* errorLabel(const char* label);
    void type(const char* label, const char* text);
    /// What an info or text field shows.
    QString shown(const char* label);

    /// The one of its kind, or the one of that name.
    template <class Widget>
    Widget& child(const char* name = nullptr) {
        return *window_->findChild<Widget*>(QString::fromLatin1(name));
    }
    QString notice() { return child<NoticeBar>().text(); }
    /// Presses the button of the notice.
    void clickNotice(const char* button);
    QAbstractItemView& tree() { return child<QAbstractItemView>("projectTree"); }
    QAbstractItemView& table() { return child<QAbstractItemView>("elementTable"); }
    QAbstractItemView& problems() { return child<QAbstractItemView>("problemList"); }
    static QStringList column(const QAbstractItemView& view, int column);
    /// The column of the table with this heading; below 0 if there is none.
    int columnOf(const char* heading);
    static void click(QAbstractItemView& view, const QModelIndex& index);

    /// Drops a file on a part of the window, as file managers do: they offer its path as text, too.
    void dropFile(QWidget& part, const QString& file);
    /// Waits until the window asks whether to import, and confirms it.
    void confirmImport();
    /// Imports the example into a new element by dropping it on the window.
    void importExample();

    QTemporaryDir folder_;
    core::PluginHost plugins_;
    ScriptedDialogs dialogs_;
    std::unique_ptr<MainWindow> window_;
};

} // namespace corvane::workbench::gui
