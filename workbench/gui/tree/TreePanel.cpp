#include "workbench/gui/tree/TreePanel.hpp"

#include "workbench/core/edit/workspace/Selection.hpp"
#include "workbench/gui/fields/EntryDelegate.hpp"
#include "workbench/gui/look/FilterLine.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <QLabel>
#include <QMenu>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TreePanel";

std::size_t positionOf(const model::Element& element, const model::Element& parent) {
    const auto children = parent.childElements();
    const auto found = std::ranges::find(children, &element, &std::unique_ptr<model::Element>::get);
    return static_cast<std::size_t>(found - children.begin());
}

} // namespace

TreePanel::TreePanel(ProjectSession& session, ClassIcons& icons, const Actions& actions,
                     QWidget* parent)
    : QWidget(parent),
      session_(&session),
      icons_(&icons),
      actions_(&actions),
      model_(new TreeModel(session, icons, this)),
      filter_(new TreeFilter(session, *model_, this)),
      view_(new QTreeView(this)),
      filterLine_(new FilterLine(translated(kContext, "Filter by name"),
                                 translated(kContext, "Filter the tree by name"), this)),
      filterResult_(plainLabel(this)),
      addMenu_(new QMenu(translated(kContext, "&Add"), this)) {
    connect(session_, &ProjectSession::resetComes, this, &TreePanel::keepState);
    buildLayout();
    connectFilter();
    connect(session_, &ProjectSession::resetEnds, this, &TreePanel::restoreState);
    connect(session_, &ProjectSession::projectDropped, this, [this] {
        expanded_.clear();
        kept_ = nullptr;
        isNewProject_ = true;
        setPickedUp({});
        const QSignalBlocker quiet(filterLine_);
        filterLine_->clear();
        filter_->setText({});
    });
    connect(session_, &ProjectSession::valuesUpdated, view_->viewport(),
            qOverload<>(&QWidget::update));
    connect(session_, &ProjectSession::moved, this,
            qOverload<const std::vector<model::Element*>&>(&TreePanel::select));
    connect(session_, &ProjectSession::structureChanged, this, &TreePanel::dropLostPickedUp);
    connect(view_->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        updateActions();
        emit currentChanged(current());
    });
    connect(view_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &TreePanel::updateActions);
    connect(addMenu_, &QMenu::aboutToShow, this, &TreePanel::fillAddMenu);
    addMenu_->setIcon(icon("add"));
    updateActions();
}

void TreePanel::buildLayout() {
    view_->setObjectName(QStringLiteral("projectTree"));
    view_->setAccessibleName(translated(kContext, "Project tree"));
    view_->setModel(model_);
    auto* const delegate = new EntryDelegate(view_);
    view_->setItemDelegate(delegate);
    connect(session_, &ProjectSession::commitWanted, delegate, &EntryDelegate::commit);
    view_->setHeaderHidden(true);
    view_->setUniformRowHeights(true);
    view_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    view_->setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::SelectedClicked);
    view_->setDragDropMode(QAbstractItemView::InternalMove);
    view_->setIconSize({18, 18});
    view_->setContextMenuPolicy(Qt::ActionsContextMenu);
    view_->addAction(addMenu_->menuAction());
    view_->addAction(&(*actions_)[Command::rename]);
    view_->addAction(&(*actions_)[Command::remove]);
    view_->addAction(&(*actions_)[Command::pickUp]);
    view_->addAction(&(*actions_)[Command::putHere]);
    // In a text the key alone belongs to the text.
    auto* const removeKey = new QShortcut(Qt::Key_Delete, view_);
    removeKey->setContext(Qt::WidgetShortcut);
    connect(removeKey, &QShortcut::activated, &(*actions_)[Command::remove], &QAction::trigger);

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

void TreePanel::connectFilter() {
    connect(filterLine_, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (!model_->isFiltered())
            keepState();
        filter_->setText(text);
    });
    connect(filterLine_, &FilterLine::left, this, &TreePanel::focusTree);
    connect(filter_, &TreeFilter::found, this, [this](std::size_t count) {
        filterResult_->setText(
            count > TreeFilter::kMaxShown
                ? translated(kContext, "{} matches, the first {} are shown",
                             {formatted(count), formatted(TreeFilter::kMaxShown)})
                : counted(kContext, "1 match", "{} matches", count));
        filterResult_->show();
        view_->expandAll();
    });
    connect(filter_, &TreeFilter::cleared, this, [this] {
        filterResult_->hide();
        if (session_->isBusy())
            return;
        restoreExpanded();
        if (kept_ != nullptr)
            select(*kept_);
    });
    connect(this, &TreePanel::currentChanged, this, [this](model::Element* element) {
        if (element != nullptr)
            kept_ = element;
    });
}

model::Element* TreePanel::current() const {
    const auto index = view_->currentIndex();
    return index.isValid() ? &model_->elementAt(index) : nullptr;
}

std::vector<model::Element*> TreePanel::selected() const {
    std::vector<model::Element*> all;
    for (const auto& index : view_->selectionModel()->selectedRows())
        all.push_back(&model_->elementAt(index));
    return core::topmostOf(all);
}

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

void TreePanel::removeSelected() {
    if (auto elements = selected(); !elements.empty())
        session_->remove(std::move(elements));
}

void TreePanel::moveSelected(Direction direction) {
    auto elements = selected();
    if (elements.empty())
        return;
    auto& parent = model_->parentOf(*elements.front());
    std::vector<std::size_t> positions;
    for (auto* const element : elements) {
        if (&model_->parentOf(*element) != &parent)
            return;
        positions.push_back(positionOf(*element, parent));
    }
    std::ranges::sort(positions);
    const auto children = parent.childElements();
    const bool isAtEnd = direction == Direction::up ? positions.front() == 0
                                                    : positions.back() + 1 == children.size();
    if (isAtEnd)
        return;
    std::ranges::transform(positions, elements.begin(),
                           [&](std::size_t position) { return children[position].get(); });
    session_->move(elements, parent,
                   direction == Direction::up ? positions.front() - 1 : positions.back() + 2);
}

void TreePanel::pickUpSelected() { setPickedUp(selected()); }

void TreePanel::putPickedUp() {
    auto* const parent = newParentOfPickedUp();
    if (parent == nullptr)
        return;
    const auto* const here = current();
    const auto position =
        parent == here ? parent->childElements().size() : positionOf(*here, *parent) + 1;
    session_->move(std::exchange(pickedUp_, {}), *parent, position);
    setPickedUp({});
}

void TreePanel::dropLostPickedUp() {
    auto standing = pickedUp_;
    std::erase_if(standing, [&](const auto* element) {
        return element->model() != &session_->project().model();
    });
    if (standing.size() != pickedUp_.size())
        setPickedUp(std::move(standing));
}

void TreePanel::setPickedUp(std::vector<model::Element*> elements) {
    pickedUp_ = std::move(elements);
    model_->setPickedUp(pickedUp_);
    view_->viewport()->update();
    updateActions();
}

model::Element* TreePanel::newParentOfPickedUp() const {
    auto* const here = current();
    if (here == nullptr || pickedUp_.empty() || session_->isBusy())
        return nullptr;
    for (auto* const parent : {here, &model_->parentOf(*here)})
        if (session_->editor().canMove(pickedUp_, *parent))
            return parent;
    return nullptr;
}

void TreePanel::focusFilter() {
    filterLine_->setFocus(Qt::ShortcutFocusReason);
    filterLine_->selectAll();
}

void TreePanel::focusTree() { view_->setFocus(Qt::ShortcutFocusReason); }

// Below the current element what it accepts, and at the top what may stand there.
void TreePanel::fillAddMenu() {
    addMenu_->clear();
    if (auto* const element = current())
        offer(*element);
    if (!addMenu_->isEmpty())
        addMenu_->addSeparator();
    offer(session_->root());
}

void TreePanel::offer(model::Element& parent) {
    for (const auto& skill : session_->plugins().skills())
        for (const auto& entry : skill.classes) {
            const auto& elementClass = *entry.elementClass;
            if (!entry.mayStandBelow(parent))
                continue;
            auto* const action = addMenu_->addAction(
                icons_->of(elementClass), withoutMnemonic(toQt(elementClass.displayName())));
            action->setToolTip(withoutFormat(toQt(elementClass.description())));
            connect(action, &QAction::triggered, this, [this, &parent, &entry] {
                session_->whenCommitted([this, &parent, &entry] { addBelow(parent, entry); });
            });
        }
}

void TreePanel::addBelow(model::Element& parent, const core::LoadedClass& elementClass) {
    if (auto* const element = session_->add(parent, elementClass))
        select(*element);
}

void TreePanel::updateActions() {
    const bool any = view_->selectionModel()->hasSelection();
    for (const auto command :
         {Command::rename, Command::remove, Command::moveUp, Command::moveDown, Command::pickUp})
        (*actions_)[command].setEnabled(any);
    (*actions_)[Command::putHere].setEnabled(newParentOfPickedUp() != nullptr);
}

void TreePanel::keepState() {
    kept_ = current();
    if (model_->isFiltered())
        return;
    expanded_.clear();
    keepExpanded({});
}

void TreePanel::keepExpanded(const QModelIndex& parent) {
    const int count = model_->rowCount(parent);
    for (int row = 0; row != count; ++row) {
        const auto index = model_->index(row, 0, parent);
        if (!view_->isExpanded(index))
            continue;
        expanded_.push_back(&model_->elementAt(index));
        keepExpanded(index);
    }
}

void TreePanel::restoreExpanded() {
    for (auto* const element : expanded_)
        if (const auto index = model_->indexOf(*element); index.isValid())
            view_->expand(index);
}

// Elements that were taken out live on in the history, so they can still be asked for their place.
void TreePanel::restoreState() {
    const auto top = session_->root().childElements();
    if (std::exchange(isNewProject_, false) && top.size() == 1) {
        kept_ = top.front().get();
        expanded_ = {kept_};
    }
    restoreExpanded();
    if (kept_ != nullptr && kept_->model() == &session_->project().model())
        select(*kept_);
    updateActions();
    emit currentChanged(current());
}

} // namespace corvane::workbench::gui
