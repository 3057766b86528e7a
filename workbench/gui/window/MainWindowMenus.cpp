// The window's menus, its tool bar, and what their commands do.
#include "workbench/gui/window/MainWindow.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"
#include "workbench/gui/session/Settings.hpp"
#include "workbench/gui/session/TextEditor.hpp"

#include <QActionGroup>
#include <QCoreApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QTabWidget>
#include <QToolBar>
#include <QToolButton>
#include <QWhatsThis>

#include <array>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::MainWindow";

} // namespace

void MainWindow::on(Command command, std::function<void()> action) {
    connect(&actions_[command], &QAction::triggered, this,
            [this, action = std::move(action)] { session_.whenCommitted(action); });
}

void MainWindow::buildMenus() {
    auto& file = *menuBar()->addMenu(translated(kContext, "&File"));
    file.addAction(&actions_[Command::newProject]);
    file.addAction(&actions_[Command::openProject]);
    auto& recent = *file.addMenu(translated(kContext, "Open &Recent"));
    connect(&recent, &QMenu::aboutToShow, this, [this, &recent] { fillRecentMenu(recent); });
    file.addSeparator();
    file.addAction(&actions_[Command::importFile]);
    file.addSeparator();
    file.addAction(&actions_[Command::saveProject]);
    file.addAction(&actions_[Command::saveProjectAs]);
    file.addSeparator();
    file.addAction(&actions_[Command::quit]);

    auto& edit = *menuBar()->addMenu(translated(kContext, "&Edit"));
    edit.addAction(&actions_[Command::undo]);
    edit.addAction(&actions_[Command::redo]);
    edit.addSeparator();
    edit.addMenu(&commands_->addMenu());
    edit.addAction(&actions_[Command::duplicate]);
    edit.addAction(&actions_[Command::rename]);
    edit.addAction(&actions_[Command::remove]);
    edit.addSeparator();
    for (const auto command :
         {Command::moveUp, Command::moveDown, Command::pickUp, Command::putHere})
        edit.addAction(&actions_[command]);
    edit.addSeparator();
    for (const auto command :
         {Command::changeSelected, Command::copyRows, Command::pasteCells, Command::fillDown})
        edit.addAction(&actions_[command]);
    edit.addSeparator();
    edit.addAction(&actions_[Command::chooseEditor]);

    auto& view = *menuBar()->addMenu(translated(kContext, "&View"));
    for (const auto command : {Command::showTree, Command::showForm, Command::showTable,
                               Command::showMemory, Command::showProblems, Command::nextProblem})
        view.addAction(&actions_[command]);
    view.addSeparator();
    for (const auto command : {Command::goToElement, Command::expandAll, Command::collapseAll})
        view.addAction(&actions_[command]);
    view.addSeparator();
    view.addAction(&actions_[Command::filterTree]);
    view.addAction(&actions_[Command::filterTable]);
    view.addSeparator();
    view.addAction(&actions_[Command::showSummaries]);
    addThemeMenu(view);

    auto& help = *menuBar()->addMenu(translated(kContext, "&Help"));
    help.addAction(QWhatsThis::createAction(this));
    help.addAction(&actions_[Command::about]);
}

void MainWindow::fillRecentMenu(QMenu& menu) {
    menu.clear();
    for (const auto& file : settings::recentProjects()) {
        auto* const action = menu.addAction(withoutMnemonic(nameAndFolder(file)));
        action->setToolTip(withoutFormat(file));
        connect(action, &QAction::triggered, this,
                [this, file] { session_.whenCommitted([this, file] { files_->open(file); }); });
    }
    if (menu.isEmpty())
        menu.addAction(translated(kContext, "None yet"))->setEnabled(false);
}

void MainWindow::addThemeMenu(QMenu& menu) {
    auto& themes = *menu.addMenu(translated(kContext, "Th&eme"));
    auto* const group = new QActionGroup(this);
    constexpr std::array<std::pair<Command, Theme>, 3> kThemes{
        {{Command::themeSystem, Theme::system},
         {Command::themeLight, Theme::light},
         {Command::themeDark, Theme::dark}}};
    for (const auto& [command, theme] : kThemes) {
        auto& action = actions_[command];
        action.setCheckable(true);
        action.setChecked(settings::theme() == theme);
        group->addAction(&action);
        themes.addAction(&action);
        on(command, [chosen = theme] {
            settings::setTheme(chosen);
            applyTheme(chosen);
        });
    }
}

void MainWindow::buildToolBar() {
    auto& bar = *addToolBar(translated(kContext, "Tools"));
    bar.setObjectName(QStringLiteral("tools"));
    bar.setMovable(false);
    bar.setIconSize({20, 20});
    for (const auto command : {Command::newProject, Command::openProject, Command::saveProject})
        bar.addAction(&actions_[command]);
    bar.addSeparator();
    bar.addAction(&actions_[Command::undo]);
    bar.addAction(&actions_[Command::redo]);
    bar.addSeparator();
    auto* const add = new QToolButton(&bar);
    add->setObjectName(QStringLiteral("addButton"));
    add->setIcon(icon("add"));
    add->setText(translated(kContext, "Add"));
    add->setToolTip(translated(kContext, "Add an element"));
    add->setAccessibleName(translated(kContext, "Add an element"));
    add->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    add->setPopupMode(QToolButton::InstantPopup);
    add->setMenu(&commands_->addMenu());
    bar.addWidget(add);
    bar.addAction(&actions_[Command::rename]);
    bar.addAction(&actions_[Command::remove]);
}

void MainWindow::connectCommands() {
    on(Command::newProject, [this] { files_->newProject(); });
    on(Command::openProject, [this] { files_->open(); });
    on(Command::saveProject, [this] { files_->save(); });
    on(Command::saveProjectAs, [this] { files_->saveAs(); });
    on(Command::quit, [this] { close(); });
    on(Command::undo, [this] { session_.undo(); });
    on(Command::redo, [this] { session_.redo(); });
    on(Command::importFile, [this] {
        const auto file = dialogs_->chooseFileToImport(
            this, importKind_ ? toQt(importKind_->label) : translated(kContext, "Import"),
            importKind_ ? toQt(std::string_view(importKind_->extension)) : QString());
        if (!file.isEmpty())
            importer_->importFile(file, tree_->current());
    });
    on(Command::duplicate, [this] { commands_->duplicate(); });
    on(Command::rename, [this] { commands_->rename(); });
    on(Command::remove, [this] { commands_->remove(); });
    on(Command::moveUp, [this] { commands_->move(ElementCommands::Direction::up); });
    on(Command::moveDown, [this] { commands_->move(ElementCommands::Direction::down); });
    on(Command::pickUp, [this] { commands_->pickUp(); });
    on(Command::putHere, [this] { commands_->put(); });
    on(Command::chooseEditor, [this] { chooseEditor(); });
    on(Command::about, [this] { showAbout(); });
}

// The same where elements are listed.
void MainWindow::offerCommands() {
    commands_->setParts(*tree_, *table_, *problems_);
    QList<QAction*> onElements{commands_->addMenu().menuAction()};
    for (const auto command :
         {Command::duplicate, Command::rename, Command::remove, Command::pickUp, Command::putHere})
        onElements += &actions_[command];
    tree_->offer(onElements + QList<QAction*>{&actions_[Command::importFile],
                                              &actions_[Command::expandAll],
                                              &actions_[Command::collapseAll]},
                 actions_[Command::remove]);
    problems_->offer({&actions_[Command::nextProblem]});
    QList<QAction*> onRows;
    for (const auto command : {Command::showForm, Command::changeSelected, Command::copyRows,
                               Command::pasteCells, Command::fillDown})
        onRows += &actions_[command];
    table_->offer(onElements + onRows);
}

void MainWindow::connectViewCommands() {
    on(Command::changeSelected, [this] {
        tabs_->setCurrentWidget(table_);
        table_->changeSelected();
    });
    on(Command::copyRows, [this] {
        commands_->leave(); // what is copied later takes the place of what was picked up
        table_->clipboard().copy();
    });
    on(Command::pasteCells, [this] { table_->clipboard().paste(); });
    on(Command::fillDown, [this] { table_->clipboard().fillDown(); });
    on(Command::filterTree, [this] { tree_->focusFilter(); });
    on(Command::filterTable, [this] {
        tabs_->setCurrentWidget(table_);
        table_->focusFilter();
    });
    on(Command::goToElement, [this] { goToElement_->open(); });
    on(Command::expandAll, [this] { tree_->expandAll(); });
    on(Command::collapseAll, [this] { tree_->collapseAll(); });
    auto& summaries = actions_[Command::showSummaries];
    summaries.setCheckable(true);
    summaries.setChecked(settings::summariesShown());
    tree_->showSummaries(summaries.isChecked());
    on(Command::showSummaries, [this, &summaries] {
        settings::setSummariesShown(summaries.isChecked());
        tree_->showSummaries(summaries.isChecked());
    });
    on(Command::showTree, [this] { tree_->focusTree(); });
    on(Command::showForm, [this] {
        tabs_->setCurrentWidget(form_);
        form_->jumpTo({});
    });
    on(Command::showTable, [this] {
        tabs_->setCurrentWidget(table_);
        table_->focusTable();
    });
    on(Command::showMemory, [this] {
        tabs_->setCurrentWidget(memory_);
        memory_->focusMap();
    });
    on(Command::showProblems, [this] { problems_->focusList(); });
    on(Command::nextProblem, [this] { problems_->activateNext(); });
}

// What would open nothing is not kept.
void MainWindow::chooseEditor() {
    const Dialogs::Entry entry{
        .title = translated(kContext, "Text Editor"),
        .text = translated(kContext,
                           "The command that opens a file in your editor. {} stand for "
                           "the file and the place in it; without a command the system "
                           "chooses the program.",
                           {QStringLiteral("{file}, {line}, {column}")}),
        .value = settings::editorCommand()};
    const auto command = dialogs_->enterText(this, entry);
    if (!command)
        return;
    const auto objection = objectionTo(*command);
    if (objection.isEmpty())
        settings::setEditorCommand(*command);
    else
        notices_->showNotice(NoticeBar::Kind::refusal, objection);
}

void MainWindow::showAbout() {
    QMessageBox::about(
        this, translated(kContext, "About corvane workbench"),
        translated(kContext, "corvane workbench {}\n\nConfigures industrial automation projects.",
                   {QCoreApplication::applicationVersion()}));
}

} // namespace corvane::workbench::gui
