#include "workbench/gui/tree/TreePanel.hpp"

#include "workbench/core/edit/workspace/Selection.hpp"
#include "workbench/gui/look/FilterLine.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/tree/ProjectView.hpp"
#include "workbench/gui/tree/TreeDelegate.hpp"

#include <QAction>
#include <QLabel>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TreePanel";

} // namespace

TreePanel::TreePanel(ProjectSession& session, ClassIcons& icons, QWidget* parent)
    : QWidget(parent),
      session_(&session),
      model_(new TreeModel(session, icons, this)),
      filter_(new TreeFilter(session, *model_, this)),
      view_(new ProjectView(this)),
      memory_(new TreeMemory(session, *model_, *view_)),
      filterLine_(new FilterLine(translated(kContext, "Filter by name or address"),
                                 translated(kContext, "Filter the tree by name or address"), this)),
      filterResult_(plainLabel(this)) {
    buildLayout();
    connectFilter();
    connectToSession();
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        if (auto* const element = current())
            kept_ = element;
        emit selectionChanged();
        emit currentChanged(current());
    });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TreePanel::selectionChanged);
    connect(memory_, &TreeMemory::wanted, this, &TreePanel::show);
}

void TreePanel::connectToSession() {
    connect(session_, &ProjectSession::resetComes, this, [this] { kept_ = current(); });
    connect(session_, &ProjectSession::resetEnds, this, &TreePanel::restoreState);
    connect(session_, &ProjectSession::projectDropped, this, [this] {
        memory_->forget();
        kept_ = nullptr;
        isNewProject_ = true;
        const QSignalBlocker quiet(filterLine_);
        filterLine_->clear();
        filter_->setText({});
    });
    connect(session_, &ProjectSession::valuesUpdated, view_->viewport(),
            qOverload<>(&QWidget::update));
    connect(session_, &ProjectSession::arrived, this,
            qOverload<const std::vector<model::Element*>&>(&TreePanel::select));
}

void TreePanel::buildLayout() {
    view_->setObjectName(QStringLiteral("projectTree"));
    view_->setAccessibleName(translated(kContext, "Project tree"));
    view_->setModel(model_);
    auto* const delegate = new TreeDelegate(*view_);
    view_->setItemDelegate(delegate);
    connect(session_, &ProjectSession::commitWanted, delegate, &EntryDelegate::commit);
    view_->setHeaderHidden(true);
    view_->setUniformRowHeights(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    view_->setDragDropMode(QAbstractItemView::InternalMove);
    view_->setIconSize({18, 18});
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);

    filterLine_->setObjectName(QStringLiteral("treeFilter"));
    filterResult_->setForegroundRole(QPalette::PlaceholderText);
    filterResult_->setWordWrap(true);
    filterResult_->hide();

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 8, 0, 8);
    layout->addWidget(filterLine_);
    layout->addWidget(filterResult_);
    layout->addWidget(view_, 1);
}

void TreePanel::offer(const QList<QAction*>& actions, QAction& removeKey) {
    view_->addActions(actions);
    auto* const key = new QShortcut(Qt::Key_Delete, view_);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, &removeKey, &QAction::trigger);
}

void TreePanel::connectFilter() {
    connect(filterLine_, &QLineEdit::textChanged, this,
            [this](const QString& text) { filter_->setText(text); });
    connect(filterLine_, &FilterLine::left, this, &TreePanel::leaveFilter);
    connect(filter_, &TreeFilter::found, this, &TreePanel::showFound);
    connect(filter_, &TreeFilter::cleared, this, [this] {
        filterResult_->hide();
        if (session_->isBusy())
            return;
        memory_->restoreExpanded();
        if (kept_ != nullptr)
            select(*kept_);
    });
}

// What the user looks at stays selected where it is found, too.
void TreePanel::showFound(std::size_t count) {
    filterResult_->setText(count > TreeFilter::kMaxShown
                               ? translated(kContext, "{} matches, the first {} are shown",
                                            {formatted(count), formatted(TreeFilter::kMaxShown)})
                               : counted(kContext, "1 match", "{} matches", count));
    filterResult_->show();
    view_->expandAll();
    if (std::exchange(firstMatchWanted_, false) && filter_->first() != nullptr)
        select(*filter_->first());
    else if (kept_ != nullptr && model_->indexOf(*kept_).isValid())
        select(*kept_);
    emit selectionChanged();
}

void TreePanel::leaveFilter() {
    focusTree();
    if (auto* const first = filter_->first())
        select(*first);
    else
        firstMatchWanted_ = !filter_->text().isEmpty() && !filter_->isShown();
}

model::Element* TreePanel::current() const {
    const auto index = view_->currentIndex();
    return index.isValid() ? &model_->elementAt(index) : nullptr;
}

std::vector<model::Element*> TreePanel::selected() const {
    return core::topmostOf(memory_->selection().elements);
}

bool TreePanel::hasSelection() const { return view_->selectionModel()->hasSelection(); }

void TreePanel::select(model::Element& element) { select(std::vector{&element}); }

void TreePanel::select(const std::vector<model::Element*>& elements) {
    QItemSelection selection;
    QModelIndex first;
    for (auto* const element : elements) {
        auto index = model_->indexOf(*element);
        if (!index.isValid() && model_->isFiltered()) {
            filterLine_->clear();
            index = model_->indexOf(*element);
        }
        if (!index.isValid())
            continue;
        if (!first.isValid())
            first = index;
        selection.select(index, index);
    }
    if (!first.isValid())
        return;
    view_->selectionModel()->setCurrentIndex(first, QItemSelectionModel::NoUpdate);
    view_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    view_->scrollTo(first);
}

void TreePanel::renameCurrent() {
    if (view_->currentIndex().isValid())
        view_->edit(view_->currentIndex());
}

void TreePanel::showPickedUp(const std::vector<model::Element*>& elements) {
    model_->setPickedUp(elements);
    view_->viewport()->update();
}

void TreePanel::setTroubled(std::unordered_set<const model::Element*> elements) {
    model_->setTroubled(std::move(elements));
    view_->viewport()->update();
}

void TreePanel::showSummaries(bool shown) {
    model_->showSummaries(shown);
    view_->viewport()->update();
}

void TreePanel::expandAll() { memory_->expandAll(); }

void TreePanel::collapseAll() { memory_->collapseAll(); }

void TreePanel::focusFilter() {
    filterLine_->setFocus(Qt::ShortcutFocusReason);
    filterLine_->selectAll();
}

void TreePanel::focusTree() { view_->setFocus(Qt::ShortcutFocusReason); }

// What a filter shows is looked for anew after the step.
void TreePanel::show(const TreeMemory::Selection& selection) {
    kept_ = selection.current;
    if (!filter_->text().isEmpty())
        return;
    select(selection.elements);
    const auto current =
        selection.current != nullptr ? model_->indexOf(*selection.current) : QModelIndex();
    if (current.isValid())
        view_->selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
}

// Elements that were taken out live on in the history, so they can still be asked for their place.
void TreePanel::restoreState() {
    const auto top = session_->root().childElements();
    if (std::exchange(isNewProject_, false) && top.size() == 1) {
        kept_ = top.front().get();
        memory_->expandLater(*kept_);
    }
    memory_->restoreExpanded();
    if (kept_ != nullptr && kept_->tree() == &session_->project().model())
        select(*kept_);
    emit selectionChanged();
    emit currentChanged(current());
}

} // namespace corvane::workbench::gui
