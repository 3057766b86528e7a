#include "workbench/gui/window/MainWindow.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/preview/ImportPreviewDialog.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <QCloseEvent>
#include <QDragEnterEvent>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QSplitter>
#include <QStackedWidget>
#include <QTabWidget>
#include <QVBoxLayout>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::MainWindow";
constexpr std::string_view kProjectExtension = ".json";
constexpr int kWidth = 1180; // where the screen has room for it
constexpr int kHeight = 760;

QString windowPiece() { return QStringLiteral("window"); }
QString acrossPiece() { return QStringLiteral("across"); }
QString downPiece() { return QStringLiteral("down"); }

} // namespace

MainWindow::MainWindow(const core::PluginHost& plugins, Dialogs& dialogs,
                       const QString& recoveryFolder)
    : dialogs_(&dialogs),
      icons_(plugins),
      session_(plugins, runner_),
      recovery_(session_, recoveryFolder),
      actions_(this),
      pages_(new QStackedWidget(this)),
      centre_(new QStackedWidget(this)),
      across_(new QSplitter(Qt::Horizontal, this)),
      down_(new QSplitter(Qt::Vertical, this)),
      tabs_(new QTabWidget(this)),
      notices_(new NoticeBar(*centre_, pages_)),
      commands_(new ElementCommands(session_, icons_, actions_, *this)),
      tree_(new TreePanel(session_, icons_, this)),
      form_(new FormPanel(session_, icons_, this)),
      table_(new TablePanel(session_, icons_, actions_, this)),
      memory_(new MemoryPanel(session_, *tree_, this)),
      problems_(new ProblemsPanel(session_, this)),
      start_(new StartPage(actions_, nameFirstSteps(plugins), commands_->addMenu(), this)),
      goToElement_(new GoToElement(session_, this)),
      busy_(new BusyPage(runner_, this)),
      files_(new ProjectFiles(session_, dialogs, *notices_, *this)),
      importer_(new Importer(session_, dialogs, *notices_, *this)) {
    setWindowIcon(icon("application"));
    setAcceptDrops(true);
    resize(QSize(kWidth, kHeight).boundedTo(screen()->availableSize()));
    buildWorkspace();
    buildMenus();
    buildToolBar();
    connectCommands();
    connectViewCommands();
    offerCommands();
    connectParts();
    connectSession();
    restoreLayout();
    openProblems(false);
    updateHistory();
    updateStart();
}

MainWindow::~MainWindow() {
    runner_.abandon();
    delete preview_.data(); // what it shows goes with the session
    delete importer_;
    delete goToElement_;
    delete commands_; // they follow the keyboard, which leaves the parts one by one
    // The parts look at the session as long as they live.
    delete takeCentralWidget();
}

// By the names that the plug-ins give them, as long as there is no choice: the text for adding an
// element to an empty project is the result.
QString MainWindow::nameFirstSteps(const core::PluginHost& plugins) {
    if (auto kinds = core::importKinds(plugins); kinds.size() == 1) {
        importKind_ = std::move(kinds.front());
        actions_[Command::importFile].setText(
            translated(kContext, "{}…", {withoutMnemonic(toQt(importKind_->label))}));
    }
    const skill::Element::Class* only = nullptr;
    std::size_t count = 0;
    for (const auto& skill : plugins.skills())
        for (const auto& entry : skill.classes)
            if (entry.topLevel) {
                only = entry.elementClass;
                ++count;
            }
    return count == 1 ? translated(kContext, "Add {}", {withoutMnemonic(toQt(only->displayName()))})
                      : translated(kContext, "Add Element");
}

void MainWindow::buildWorkspace() {
    tabs_->setDocumentMode(true);
    tabs_->addTab(form_, actions_[Command::showForm].icon(), translated(kContext, "Properties"));
    tabs_->addTab(table_, actions_[Command::showTable].icon(), translated(kContext, "Elements"));
    tabs_->addTab(memory_, actions_[Command::showMemory].icon(), translated(kContext, "Memory"));
    centre_->addWidget(start_);
    centre_->addWidget(tabs_);
    down_->addWidget(centre_);
    down_->addWidget(problems_);
    down_->setStretchFactor(0, 1);
    down_->setSizes({560, 160});
    across_->addWidget(tree_);
    across_->addWidget(down_);
    across_->setStretchFactor(1, 1);
    across_->setSizes({320, 860});
    across_->setChildrenCollapsible(false);
    down_->setChildrenCollapsible(false);

    auto* const workspace = new QWidget(pages_);
    auto* const layout = new QVBoxLayout(workspace);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(across_, 1);
    notices_->setParent(workspace);
    pages_->addWidget(workspace);
    pages_->addWidget(busy_);
    setCentralWidget(pages_);
}

void MainWindow::connectParts() {
    connect(tree_, &TreePanel::currentChanged, this, &MainWindow::showElement);
    connect(form_, &FormPanel::importWanted, this,
            [this](model::Element* element, const QString& key) {
                session_.whenCommitted(
                    [this, element, key] { importer_->chooseAndImport(*element, key); });
            });
    connect(importer_, &Importer::imported, this,
            [this](const std::vector<model::Element*>& elements) {
                tree_->select(elements);
                if (elements.size() > 1)
                    table_->showSiblings(elements);
            });
    connect(importer_, &Importer::reviewWanted, this, &MainWindow::showPreview);
    connect(importer_, &Importer::answered, this, &MainWindow::takePending);
    connect(tree_, &TreePanel::selectionChanged, this, [this] {
        if (table_->showsSiblings() && !session_.isBusy() && tree_->selected().size() == 1)
            table_->leaveSiblings();
    });
    connect(problems_, &ProblemsPanel::activated, this, &MainWindow::goTo);
    connect(&problems_->model(), &ProblemsModel::counted, this,
            [this](std::size_t, const std::unordered_set<const model::Element*>& above) {
                updateProblems();
                tree_->setTroubled(above);
            });
    connect(&problems_->model(), &ProblemsModel::warningsCounted, this,
            &MainWindow::updateProblems);
    connect(table_, &TablePanel::elementActivated, this,
            [this](model::Element* element) { goTo(element, {}); });
    connect(memory_, &MemoryPanel::activated, this,
            [this](model::Element* element) { tree_->select(*element); });
    connect(goToElement_, &GoToElement::chosen, this, [this](model::Element* element) {
        tree_->select(*element);
        tree_->focusTree();
    });
    connect(start_, &StartPage::projectChosen, files_,
            [this](const QString& file) { files_->open(file); });
    connect(files_, &ProjectFiles::fileChanged, this, [this] {
        recovery_.setProjectFile(files_->file());
        start_->refresh();
        updateTitle();
    });
}

void MainWindow::connectSession() {
    connect(&session_, &ProjectSession::historyUpdated, this, &MainWindow::updateHistory);
    connect(&session_, &ProjectSession::structureChanged, this, &MainWindow::updateStart);
    connect(&session_, &ProjectSession::stepEnded, this,
            [this](ProjectSession::Way way, bool good) {
                if (good && way == ProjectSession::Way::forth)
                    notices_->clearLastStep();
                else if (good)
                    notices_->clearLastStepAndWarning();
            });
    connect(&session_, &ProjectSession::refused, this, [this](const QString& reason) {
        notices_->showNotice(NoticeBar::Kind::refusal, reason);
    });
    connect(&session_, &ProjectSession::remarked, this, [this](const QString& remark) {
        notices_->showNotice(NoticeBar::Kind::information, remark);
    });
    connect(&runner_, &BusyRunner::preparing, this, [this] { snapshot_ = pages_->grab(); });
    connect(&runner_, &BusyRunner::began, this, &MainWindow::beginBusy);
    connect(&runner_, &BusyRunner::ended, this, &MainWindow::endBusy);
}

void MainWindow::beginBusy(const QString& title) {
    focusBeforeBusy_ = focusWidget();
    busy_->begin(std::exchange(snapshot_, {}), title);
    pages_->setCurrentWidget(busy_);
    menuBar()->setEnabled(false);
}

void MainWindow::endBusy() {
    menuBar()->setEnabled(true);
    pages_->setCurrentIndex(0);
    if (focusBeforeBusy_ != nullptr)
        focusBeforeBusy_->setFocus(Qt::OtherFocusReason);
    showElement(tree_->current()); // what was clicked on before the job hid it
    takePending();
}

void MainWindow::goTo(model::Element* element, std::string_view key) {
    tabs_->setCurrentWidget(form_);
    tree_->select(*element);
    form_->jumpTo(key);
}

// What is being typed in the form belongs to the element that is left.
void MainWindow::showElement(model::Element* element) {
    static_cast<void>(session_.commitPending());
    if (session_.isBusy())
        return; // shown when the job has ended
    if (form_->element() != element || element == nullptr)
        form_->showElement(element);
    table_->setScope(element);
    memory_->refreshSoon();
}

void MainWindow::updateHistory() {
    const auto& editor = session_.editor();
    const auto update = [this](Command command, bool possible, const QString& what) {
        actions_[command].setEnabled(possible);
        actions_.setObject(command, possible ? what : QString());
    };
    update(Command::undo, editor.canUndo(), editor.canUndo() ? toQt(editor.undoText()) : QString());
    update(Command::redo, editor.canRedo(), editor.canRedo() ? toQt(editor.redoText()) : QString());
    updateTitle();
}

void MainWindow::updateTitle() {
    setWindowTitle(
        translated(kContext, "{}[*] – corvane workbench", {withoutModifiedMark(files_->name())}));
    setWindowModified(session_.isModified());
}

void MainWindow::updateStart() {
    const bool empty = session_.isEmpty();
    centre_->setCurrentWidget(empty ? static_cast<QWidget*>(start_) : tabs_);
    tree_->setVisible(!empty);
    problems_->setVisible(!empty);
}

// A list without a line has no need of its room, and gets it back.
void MainWindow::updateProblems() {
    const bool any = problems_->model().rowCount() != 0;
    actions_[Command::nextProblem].setEnabled(any);
    openProblems(any);
}

void MainWindow::openProblems(bool open) {
    if (open == problems_->isOpen())
        return;
    const int before = down_->sizes().value(1);
    problems_->setOpen(open);
    if (!open && before > 0)
        problemsHeight_ = before;
    if (open)
        down_->setSizes({down_->height() - problemsHeight_, problemsHeight_});
}

void MainWindow::openFiles(const QStringList& files) {
    if (session_.isBusy()) {
        pendingFiles_ += files;
        return;
    }
    session_.whenCommitted([this, files] {
        pendingFiles_ += files;
        takePending();
    });
}

void MainWindow::showPreview(const std::shared_ptr<ImportDraft>& draft) {
    preview_ = new ImportPreviewDialog(draft, session_, this);
    preview_->open();
}

void MainWindow::takePending() {
    while (!pendingFiles_.isEmpty() && !session_.isBusy() && !importer_->isAsking()) {
        const auto file = pendingFiles_.takeFirst();
        if (extensionOf(file) == kProjectExtension)
            files_->open(file);
        else
            importer_->importFile(file, tree_->current());
    }
}

void MainWindow::tellOfFailures(const core::PluginHost& plugins) {
    QStringList lines;
    for (const auto& failure : plugins.failures())
        lines += translated(kContext, "The plug-in {} was not loaded: {}",
                            {toQt(std::string_view(failure.file.native())),
                             toQt(std::string_view(failure.reason))});
    if (!lines.isEmpty())
        notices_->showNotice(NoticeBar::Kind::error, lines.join(QLatin1Char('\n')));
}

void MainWindow::offerRecovery() {
    const auto remains = recovery_.find();
    if (!remains)
        return;
    const auto name = remains->projectFile.isEmpty() ? translated(kContext, "an untitled project")
                                                     : remains->projectFile;
    const Dialogs::Choice question{
        .title = translated(kContext, "Unsaved Work Found"),
        .text = translated(kContext,
                           "The program did not end in good order the last time. Unsaved work on "
                           "{} was kept, as it was on {}.",
                           {name, formatted(remains->written)}),
        .answers = {translated(kContext, "Recover"), translated(kContext, "Ask Next Time"),
                    translated(kContext, "Discard")},
        .byDefault = 0,
        .onEscape = 1};
    switch (dialogs_->choose(this, question)) {
    case 0:
        files_->recover(remains->file, remains->projectFile, [this, remains = *remains] {
            recovery_.keepNow();
            Recovery::discard(remains);
        });
        break;
    case 2:
        Recovery::discard(*remains);
        break;
    default: // stays where it is
        break;
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    if (session_.isBusy() || !session_.commitPending([this] { close(); })) {
        event->ignore();
        return;
    }
    if (closing_ || !session_.isModified()) {
        keepLayout();
        event->accept();
        return;
    }
    event->ignore();
    files_->whenSafe([this] {
        closing_ = true;
        QMetaObject::invokeMethod(this, &QWidget::close, Qt::QueuedConnection);
    });
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
    if (event->mimeData()->hasUrls() && !session_.isBusy())
        event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
    QStringList files;
    for (const auto& url : event->mimeData()->urls())
        if (url.isLocalFile())
            files += url.toLocalFile();
    event->acceptProposedAction();
    openFiles(files);
}

void MainWindow::keepLayout() {
    openProblems(true);
    settings::setLayout(windowPiece(), saveGeometry());
    settings::setLayout(acrossPiece(), across_->saveState());
    settings::setLayout(downPiece(), down_->saveState());
}

void MainWindow::restoreLayout() {
    restoreGeometry(settings::layout(windowPiece()));
    across_->restoreState(settings::layout(acrossPiece()));
    down_->restoreState(settings::layout(downPiece()));
}

} // namespace corvane::workbench::gui
