#pragma once

#include "workbench/gui/form/FormPanel.hpp"
#include "workbench/gui/look/Actions.hpp"
#include "workbench/gui/look/NoticeBar.hpp"
#include "workbench/gui/memory/MemoryPanel.hpp"
#include "workbench/gui/problems/ProblemsPanel.hpp"
#include "workbench/gui/session/BusyRunner.hpp"
#include "workbench/gui/session/Importer.hpp"
#include "workbench/gui/session/ProjectFiles.hpp"
#include "workbench/gui/session/Recovery.hpp"
#include "workbench/gui/table/TablePanel.hpp"
#include "workbench/gui/tree/TreePanel.hpp"
#include "workbench/gui/window/BusyPage.hpp"
#include "workbench/gui/window/ElementCommands.hpp"
#include "workbench/gui/window/GoToElement.hpp"
#include "workbench/gui/window/StartPage.hpp"

#include <QMainWindow>
#include <QPointer>

#include <optional>

class QDialog;
class QSplitter;
class QStackedWidget;
class QTabWidget;

namespace corvane::workbench::gui {

/// The window: the tree on the left, form, table or memory of what is selected beside it, problems
/// below. It puts the parts together; what each does is theirs.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `plugins` and `dialogs` must outlive the window. `recoveryFolder` keeps unsaved work.
    MainWindow(const core::PluginHost& plugins, Dialogs& dialogs, const QString& recoveryFolder);
    ~MainWindow() override;

    /// Opens a project, or imports any other file; one after the other.
    void openFiles(const QStringList& files);

    /// Says which plug-ins could not be loaded, if any.
    void tellOfFailures(const core::PluginHost& plugins);

    /// Offers what a crash has left of unsaved work, if anything.
    void offerRecovery();

    [[nodiscard]] ProjectSession& session() { return session_; }
    [[nodiscard]] Recovery& recovery() { return recovery_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    [[nodiscard]] QString nameFirstSteps(const core::PluginHost& plugins);
    void updateProblems();
    void openProblems(bool open);
    void buildWorkspace();
    void buildMenus();
    void buildToolBar();
    void fillRecentMenu(QMenu& menu);
    void addThemeMenu(QMenu& menu);
    void connectCommands();
    void offerCommands();
    void connectViewCommands();
    void connectParts();
    void connectSession();
    void on(Command command, std::function<void()> action);

    void beginBusy(const QString& title);
    void endBusy();
    void takePending();
    void showPreview(const std::shared_ptr<ImportDraft>& draft);
    void goTo(model::Element* element, std::string_view key);
    void showElement(model::Element* element);
    void updateHistory();
    void updateTitle();
    void updateStart();
    void chooseEditor();
    void showAbout();
    void keepLayout();
    void restoreLayout();

    Dialogs* dialogs_;
    std::optional<core::ImportKind> importKind_; // where there is but one
    BusyRunner runner_;
    ClassIcons icons_;
    ProjectSession session_;
    Recovery recovery_;
    Actions actions_;

    QStackedWidget* pages_;  // the workspace or the busy page
    QStackedWidget* centre_; // the start page or the tabs
    QSplitter* across_;
    QSplitter* down_;
    QTabWidget* tabs_;
    NoticeBar* notices_;
    ElementCommands* commands_;
    TreePanel* tree_;
    FormPanel* form_;
    TablePanel* table_;
    MemoryPanel* memory_;
    ProblemsPanel* problems_;
    StartPage* start_;
    GoToElement* goToElement_;
    BusyPage* busy_;
    ProjectFiles* files_;
    Importer* importer_;
    QPointer<QDialog> preview_; // while the user is asked about an import

    QStringList pendingFiles_;
    QPixmap snapshot_; // of what the busy page will stand in for
    QPointer<QWidget> focusBeforeBusy_;
    int problemsHeight_ = 160; // when there are any
    bool closing_ = false;
};

} // namespace corvane::workbench::gui
