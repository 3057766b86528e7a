#include "workbench/gui/table/TablePanel.hpp"

#include "workbench/gui/look/FilterLine.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/table/TableDelegate.hpp"

#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TablePanel";
constexpr int kTypingPause = 150; // milliseconds
constexpr int kColumnRoom = 12;
constexpr int kWidestColumn = 280;
constexpr int kLeastFilter = 160;
constexpr int kNarrow = 640; // a panel of less has no room for the texts of buttons

constexpr std::array kOwnCommands{Command::copyRows, Command::pasteCells, Command::fillDown};

} // namespace

TablePanel::TablePanel(ProjectSession& session, ClassIcons& icons, const Actions& actions,
                       QWidget* parent)
    : QWidget(parent),
      session_(&session),
      icons_(&icons),
      actions_(&actions),
      model_(new TableModel(session, icons, this)),
      view_(new ElementView(this)),
      clipboard_(new TableClipboard(session, *model_, *view_)),
      classes_(new QComboBox(this)),
      filter_(new FilterLine(translated(kContext, "Filter by any cell"),
                             translated(kContext, "Filter the table by any cell"), this)),
      count_(plainLabel(this)),
      change_(new QToolButton(this)),
      bulkEdit_(new BulkEditBar(session, this)) {
    filterLater_.setSingleShot(true);
    filterLater_.setInterval(kTypingPause);
    selectionLater_.setSingleShot(true);
    selectionLater_.setInterval(0);
    buildLayout();
    connectParts();
}

void TablePanel::buildLayout() {
    view_->setObjectName(QStringLiteral("elementTable"));
    view_->setAccessibleName(translated(kContext, "Elements"));
    view_->setModel(model_);
    auto* const delegate = new TableDelegate(*model_, view_);
    view_->setItemDelegate(delegate);
    connect(session_, &ProjectSession::commitWanted, delegate, &TableDelegate::commit);
    view_->setAlternatingRowColors(true);
    view_->setSelectionBehavior(QAbstractItemView::SelectRows);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                           QAbstractItemView::AnyKeyPressed);
    view_->setSortingEnabled(true);
    view_->setTabKeyNavigation(false);
    view_->setWordWrap(false);
    view_->setShowGrid(false);
    view_->verticalHeader()->hide();
    view_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view_->verticalHeader()->setDefaultSectionSize(view_->fontMetrics().height() + 10);
    view_->horizontalHeader()->setSortIndicatorClearable(true);
    view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    view_->horizontalHeader()->setDefaultSectionSize(130);
    view_->horizontalHeader()->setResizeContentsPrecision(0); // what is seen counts
    view_->horizontalHeader()->setStretchLastSection(true);
    view_->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    view_->horizontalHeader()->setSectionsMovable(true);
    connect(view_, &ElementView::headingMenuWanted, this, &TablePanel::offerColumns);
    columns_ = new ColumnLayout(*model_, *view_->horizontalHeader());
    // Which columns are selected as a whole a heading would ask of each row, and each time.
    view_->horizontalHeader()->setSelectionModel(new QItemSelectionModel(model_, view_));

    view_->installEventFilter(this);
    for (const auto command : kOwnCommands)
        (*actions_)[command].setShortcutContext(Qt::WidgetShortcut);

    classes_->setObjectName(QStringLiteral("tableClass"));
    classes_->setAccessibleName(translated(kContext, "Kind of elements"));
    classes_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    filter_->setObjectName(QStringLiteral("tableFilter"));
    count_->setForegroundRole(QPalette::PlaceholderText);
    filter_->setMinimumWidth(kLeastFilter);
    change_->setDefaultAction(&(*actions_)[Command::changeSelected]);
    change_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);

    auto* const bar = new QHBoxLayout;
    bar->addWidget(classes_);
    bar->addWidget(filter_, 1);
    bar->addWidget(count_);
    bar->addWidget(change_);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 8, 8);
    layout->addLayout(bar);
    layout->addWidget(bulkEdit_);
    layout->addWidget(view_, 1);
    bulkEdit_->hide();
}

void TablePanel::connectParts() {
    auto& source = model_->source();
    connect(&source, &TableSource::collected, this, &TablePanel::offerClasses);
    connect(classes_, &QComboBox::activated, this, [this] {
        takeClass();
        wantedClass_ = model_->elementClass();
    });
    connect(filter_, &FilterLine::left, this, &TablePanel::focusTable);
    connect(filter_, &QLineEdit::textChanged, &filterLater_, qOverload<>(&QTimer::start));
    connect(&filterLater_, &QTimer::timeout, this, [this] { model_->setFilter(filter_->text()); });
    connect(model_, &TableModel::settled, this, &TablePanel::showCount);
    connect(model_, &TableModel::progressed, this, [this](int percent) {
        count_->setText(translated(kContext, "looking through, {} %", {QString::number(percent)}));
    });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, &selectionLater_,
            qOverload<>(&QTimer::start));
    connect(model_, &QAbstractItemModel::modelReset, &selectionLater_, qOverload<>(&QTimer::start));
    connect(&selectionLater_, &QTimer::timeout, this, &TablePanel::updateBulkEdit);
    connect(bulkEdit_, &BulkEditBar::closed, this, [this] {
        bulkEditWanted_ = false;
        bulkEdit_->hide();
        focusTable();
    });
    connect(bulkEdit_, &BulkEditBar::fieldChosen, this, &TablePanel::showColumn);
    connect(view_, &QTableView::activated, this, [this](const QModelIndex& index) {
        if (!model_->flags(index).testFlag(Qt::ItemIsEditable))
            emit elementActivated(&model_->elementAt(index.row()));
    });
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, &selectionLater_,
            qOverload<>(&QTimer::start));
    connect(&(*actions_)[Command::putHere], &QAction::enabledChanged, this,
            &TablePanel::updateCommands);
    (*actions_)[Command::changeSelected].setEnabled(false);
    updateCommands();
}

// Whoever does not see the table changes nothing in it.
void TablePanel::updateCommands() {
    const bool seen = isVisible();
    (*actions_)[Command::copyRows].setEnabled(seen && clipboard_->canCopy());
    // What was picked up to be moved is put by the same key.
    (*actions_)[Command::pasteCells].setEnabled(seen && clipboard_->canPaste() &&
                                                !(*actions_)[Command::putHere].isEnabled());
    (*actions_)[Command::fillDown].setEnabled(seen && clipboard_->canFillDown());
}

QAction* TablePanel::ownCommand(const QKeyEvent& key) const {
    for (const auto command : kOwnCommands) {
        auto& action = (*actions_)[command];
        const bool isPut =
            command == Command::pasteCells && (*actions_)[Command::putHere].isEnabled();
        if (action.shortcut() == QKeySequence(key.keyCombination()) && !isPut)
            return &action;
    }
    return nullptr;
}

bool TablePanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* const own = ownCommand(*static_cast<QKeyEvent*>(event));
    if (own == nullptr)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress)
        own->trigger();
    event->accept();
    return true;
}

void TablePanel::setScope(model::Element* element) {
    if (element != nullptr && element == amongSiblings_)
        return;
    amongSiblings_ = nullptr;
    auto* scope = element;
    if (scope != nullptr && scope->childElements().empty())
        scope = scope->parentElement();
    model_->source().setScope(scope != nullptr ? scope : &session_->root());
}

// The last is of the kind that the user has asked for: what it needs stands in front of it.
void TablePanel::showSiblings(const std::vector<model::Element*>& elements) {
    amongSiblings_ = elements.front();
    siblingsClass_ = &elements.back()->elementClass();
    model_->source().setScope(&session_->project().model().parentOf(*elements.front()));
}

// Another kind of elements may be wanted now, even of the same scope.
void TablePanel::leaveSiblings() {
    setScope(std::exchange(amongSiblings_, nullptr));
    offerClasses();
}

void TablePanel::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    change_->setToolButtonStyle(width() < kNarrow ? Qt::ToolButtonIconOnly
                                                  : Qt::ToolButtonTextBesideIcon);
}

void TablePanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    model_->source().setActive(true);
    updateCommands();
}

void TablePanel::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    model_->source().setActive(false);
    updateCommands();
}

// The user's last choice where there are such elements, else the most numerous kind.
void TablePanel::offerClasses() {
    const auto& groups = model_->source().groups();
    const auto* const wanted = amongSiblings_ != nullptr ? siblingsClass_ : wantedClass_;
    const QSignalBlocker quiet(classes_);
    classes_->clear();
    int chosen = -1;
    std::size_t most = 0;
    bool wantedFound = false;
    for (const auto& group : groups) {
        const int index = classes_->count();
        classes_->addItem(icons_->of(*group.elementClass),
                          translated(kContext, "{} ({})",
                                     {toQt(group.elementClass->displayName()),
                                      formatted(group.elements.size())}));
        if (group.elementClass == wanted)
            wantedFound = true;
        if (wantedFound ? group.elementClass == wanted : group.elements.size() > most) {
            chosen = index;
            most = group.elements.size();
        }
    }
    classes_->setCurrentIndex(chosen);
    classes_->setEnabled(chosen >= 0);
    takeClass();
}

void TablePanel::takeClass() {
    const auto& groups = model_->source().groups();
    const int index = classes_->currentIndex();
    const auto* const chosen =
        index < 0 ? nullptr : groups[static_cast<std::size_t>(index)].elementClass;
    const bool isOther = chosen != model_->elementClass();
    if (isOther)
        view_->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    model_->setClass(chosen);
    if (isOther)
        fitColumns();
    showCount();
}

// Later widths are the user's.
void TablePanel::fitColumns() {
    view_->resizeColumnsToContents();
    for (int column = 0; column != model_->columnCount(); ++column)
        if (!view_->isColumnHidden(column))
            view_->setColumnWidth(
                column, std::min(view_->columnWidth(column) + kColumnRoom, kWidestColumn));
}

void TablePanel::showCount() {
    const auto shown = static_cast<std::size_t>(model_->rowCount());
    const auto all = model_->unfilteredCount();
    count_->setText(
        shown == all ? counted(kContext, "1 row", "{} rows", all)
                     : translated(kContext, "{} of {} rows", {formatted(shown), formatted(all)}));
}

std::vector<model::Element*> TablePanel::selected() const {
    std::vector<model::Element*> elements;
    const auto ranges = view_->selectionModel()->selection();
    elements.reserve(std::accumulate(ranges.begin(), ranges.end(), std::size_t{},
                                     [](std::size_t sum, const auto& range) {
                                         return sum + static_cast<std::size_t>(range.height());
                                     }));
    for (const auto& range : ranges)
        for (int row = range.top(); row <= range.bottom(); ++row)
            elements.push_back(&model_->elementAt(row));
    return elements;
}

model::Element* TablePanel::current() const {
    const auto index = view_->currentIndex();
    return index.isValid() ? &model_->elementAt(index.row()) : nullptr;
}

bool TablePanel::hasSelection() const { return view_->selectionModel()->hasSelection(); }

void TablePanel::renameCurrent() {
    const auto name = view_->currentIndex().siblingAtColumn(static_cast<int>(FixedColumn::name));
    if (!name.isValid())
        return;
    view_->setCurrentIndex(name);
    view_->edit(name);
}

void TablePanel::offer(const QList<QAction*>& actions) {
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
    view_->addActions(actions);
    auto* const key = new QShortcut(Qt::Key_Delete, view_);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, &(*actions_)[Command::remove], &QAction::trigger);
}

void TablePanel::updateBulkEdit() {
    if (session_->isBusy())
        return;
    emit selectionChanged();
    updateCommands();
    const bool any = hasSelection() && model_->hasFields();
    (*actions_)[Command::changeSelected].setEnabled(any);
    bulkEdit_->setVisible(bulkEditWanted_ && any);
    if (bulkEditWanted_ && any)
        bulkEdit_->setElements(selected());
}

void TablePanel::changeSelected() {
    bulkEditWanted_ = true;
    updateBulkEdit();
    if (bulkEdit_->isVisible())
        bulkEdit_->begin();
}

// Where it is out of sight, at the rows that are seen.
void TablePanel::showColumn(const std::string& key) {
    const int row = view_->rowAt(0);
    if (const int column = model_->columnOf(key); column >= 0 && row >= 0)
        view_->scrollTo(model_->index(row, column));
}

void TablePanel::offerColumns(const QPoint& globalPlace) {
    auto* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (int column = 1; column < model_->columnCount(); ++column) { // the name stays
        const auto heading = model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        auto* const action = menu->addAction(withoutMnemonic(heading));
        action->setCheckable(true);
        action->setChecked(!view_->isColumnHidden(column));
        connect(action, &QAction::toggled, this,
                [this, column](bool shown) { columns_->setShown(column, shown); });
    }
    menu->addSeparator();
    connect(menu->addAction(translated(kContext, "All Columns, as in the Form")),
            &QAction::triggered, columns_, &ColumnLayout::reset);
    connect(menu->addAction(translated(kContext, "As Wide as Their Contents")), &QAction::triggered,
            this, &TablePanel::fitColumns);
    menu->popup(globalPlace);
}

void TablePanel::focusTable() { view_->setFocus(Qt::ShortcutFocusReason); }

void TablePanel::focusFilter() {
    filter_->setFocus(Qt::ShortcutFocusReason);
    filter_->selectAll();
}

} // namespace corvane::workbench::gui
