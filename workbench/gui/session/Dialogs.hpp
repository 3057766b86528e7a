#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

namespace corvane::workbench::gui {

/// The questions that the window asks its user and waits for. An empty answer means that the user
/// has thought better of it.
class Dialogs {
public:
    Dialogs() = default;
    Dialogs(const Dialogs&) = delete;
    Dialogs& operator=(const Dialogs&) = delete;
    virtual ~Dialogs();

    virtual QString chooseProjectToOpen(QWidget* parent) = 0;
    virtual QString chooseProjectToSave(QWidget* parent, const QString& suggestion) = 0;

    /// `title` is the label of the button that was pressed, `extension` begins with a dot; it is
    /// empty where a file of any kind may be chosen.
    virtual QString chooseFileToImport(QWidget* parent, const QString& title,
                                       const QString& extension) = 0;

    enum class Unsaved { save, discard, cancel };
    /// Asked before anything unsaved would be lost.
    virtual Unsaved askUnsaved(QWidget* parent, const QString& projectName) = 0;

    struct Question {
        QString title;
        QString text;
        QString accept; // what the button says that agrees
        QString reject;
    };
    /// True when the user agrees.
    virtual bool confirm(QWidget* parent, const Question& question) = 0;

    struct Choice {
        QString title;
        QString text;
        QStringList answers; // what the buttons say
        int byDefault = 0;   // the answer that Enter gives
        int onEscape = 0;    // the one that Escape gives, and closing the question
    };
    /// The number of the answer that the user gives.
    virtual int choose(QWidget* parent, const Choice& question) = 0;

    struct Entry {
        QString title;
        QString text;
        QString value; // to begin with
    };
    /// What the user enters, which may be empty; nothing where he thinks better of it.
    virtual std::optional<QString> enterText(QWidget* parent, const Entry& entry) = 0;

    /// One of several; empty for none.
    virtual QString chooseOne(QWidget* parent, const QString& title, const QString& text,
                              const QStringList& choices) = 0;
};

} // namespace corvane::workbench::gui
