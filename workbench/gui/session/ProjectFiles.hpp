#pragma once

#include "workbench/gui/look/NoticeBar.hpp"
#include "workbench/gui/session/Dialogs.hpp"
#include "workbench/gui/session/FileWatch.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <exception>
#include <functional>
#include <optional>

namespace corvane::workbench::gui {

/// The file of the shown project: new, open, save, and that nothing unsaved is lost on the way.
class ProjectFiles : public QObject {
    Q_OBJECT

public:
    using Then = std::function<void()>;

    /// Questions are asked above `window`. All must outlive the object.
    ProjectFiles(ProjectSession& session, Dialogs& dialogs, NoticeBar& notices, QWidget& window);

    /// The project's file; empty if it has none yet.
    [[nodiscard]] const QString& file() const { return file_; }
    /// What the user calls the project.
    [[nodiscard]] QString name() const;

    void newProject();
    /// Asks for a file and opens it.
    void open();
    void open(const QString& file, Then then = {});
    /// Opens what a crash has left of a project; `file` is the project's own, or empty.
    void recover(const QString& remains, const QString& file, Then then);

    /// Each calls `then` when the project was saved, and not when it was not.
    void save(Then then = {});
    void saveAs(Then then = {});

    /// Calls `then` once nothing unsaved would be lost: at once, or when the user has decided.
    void whenSafe(Then then);

signals:
    /// Another file is the project's, or the project was saved.
    void fileChanged();

private:
    void load(const QString& source, const QString& file, bool unsaved, Then then);
    /// The file must be in the `known` state, unless the user was asked about what it holds.
    void write(const QString& file, const std::optional<core::FileIdentity>& known, Then then);
    void tellOfFailure(const QString& file, const std::exception_ptr& failure, Then then);
    /// Asks whether what another program wrote may go.
    [[nodiscard]] bool mayOverwrite();
    [[nodiscard]] QString proposedName() const;
    /// `known` is the state in which we read or wrote the file; without it, its present one.
    void setFile(const QString& file, const std::optional<core::FileIdentity>& known = {});
    void tellOfChange();
    void readAgain();

    ProjectSession* session_;
    Dialogs* dialogs_;
    NoticeBar* notices_;
    QWidget* window_;
    FileWatch watch_;
    QString file_;
};

} // namespace corvane::workbench::gui
