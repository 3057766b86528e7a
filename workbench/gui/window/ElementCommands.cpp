#include "workbench/gui/window/ElementCommands.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/table/TablePanel.hpp"
#include "workbench/gui/tree/TreePanel.hpp"

#include <QApplication>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ElementCommands";

std::size_t positionOf(const model::Element& element, const model::Element& parent) {
    const auto children = parent.childElements();
    const auto found = std::ranges::find(children, &element, &std::unique_ptr<model::Element>::get);
    return static_cast<std::size_t>(found - children.begin());
}

} // namespace

ElementCommands::ElementCommands(ProjectSession& session, ClassIcons& icons, const Actions& actions,
                                 QWidget& window)
    : QObject(&window),
      session_(&session),
      icons_(&icons),
      actions_(&actions),
      addMenu_(new QMenu(translated(kContext, "&Add"), &window)) {
    addMenu_->setIcon(icon("add"));
    connect(addMenu_, &QMenu::aboutToShow, this, &ElementCommands::fillAddMenu);
    connect(session_, &ProjectSession::structureChanged, this, &ElementCommands::dropLostPickedUp);
    connect(session_, &ProjectSession::projectDropped, this, [this] { setPickedUp({}); });
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, const QWidget* now) { follow(now); });
}

void ElementCommands::setParts(TreePanel& tree, TablePanel& table, QWidget& others) {
    tree_ = &tree;
    table_ = &table;
    others_ = &others;
    connect(tree_, &TreePanel::selectionChanged, this, &ElementCommands::update);
    connect(table_, &TablePanel::selectionChanged, this, &ElementCommands::update);
    setPart(tree_);
}

// A form belongs to what is selected in the tree; menus and buttons to nothing of their own.
void ElementCommands::follow(const QWidget* focus) {
    const auto isIn = [focus](const QWidget* part) {
        return focus != nullptr && (part == focus || part->isAncestorOf(focus));
    };
    if (tree_ == nullptr)
        return;
    if (isIn(table_))
        setPart(table_);
    else if (isIn(others_))
        setPart(nullptr);
    else if (isIn(tree_) || isIn(table_->parentWidget()))
        setPart(tree_);
}

void ElementCommands::setPart(ElementPart* part) {
    part_ = part;
    update();
}

// A table that went out of sight has no say.
ElementPart* ElementCommands::part() const {
    return part_ == table_ && !table_->isVisible() ? tree_ : part_;
}

model::Element* ElementCommands::current() const {
    const auto* const selecting = part();
    return selecting == nullptr ? nullptr : selecting->current();
}

model::Element& ElementCommands::parentOf(model::Element& element) const {
    return session_->project().model().parentOf(element);
}

void ElementCommands::duplicate() {
    if (const auto* const selecting = part(); selecting != nullptr && selecting->hasSelection())
        session_->duplicate(selecting->selected());
}

void ElementCommands::rename() {
    if (current() != nullptr)
        part()->renameCurrent();
}

void ElementCommands::remove() {
    if (const auto* const selecting = part(); selecting != nullptr && selecting->hasSelection())
        session_->remove(selecting->selected());
}

void ElementCommands::move(Direction direction) {
    const auto* const selecting = part();
    if (selecting == nullptr || !selecting->hasSelection())
        return;
    auto elements = selecting->selected();
    auto& parent = parentOf(*elements.front());
    std::vector<std::size_t> positions;
    for (auto* const element : elements) {
        if (&parentOf(*element) != &parent)
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

void ElementCommands::pickUp() {
    if (const auto* const selecting = part())
        setPickedUp(selecting->selected());
}

void ElementCommands::put() {
    auto* const parent = newParentOfPickedUp();
    if (parent == nullptr)
        return;
    const auto* const here = current();
    const auto position =
        parent == here ? parent->childElements().size() : positionOf(*here, *parent) + 1;
    session_->move(std::exchange(pickedUp_, {}), *parent, position);
    setPickedUp({});
}

void ElementCommands::dropLostPickedUp() {
    auto standing = pickedUp_;
    std::erase_if(standing, [&](const auto* element) {
        return element->tree() != &session_->project().model();
    });
    if (standing.size() != pickedUp_.size())
        setPickedUp(std::move(standing));
}

void ElementCommands::setPickedUp(std::vector<model::Element*> elements) {
    pickedUp_ = std::move(elements);
    tree_->showPickedUp(pickedUp_);
    update();
}

model::Element* ElementCommands::newParentOfPickedUp() const {
    if (pickedUp_.empty() || session_->isBusy())
        return nullptr;
    auto* const here = current();
    if (here == nullptr)
        return nullptr;
    for (auto* const parent : {here, &parentOf(*here)})
        if (session_->editor().canMove(pickedUp_, *parent))
            return parent;
    return nullptr;
}

// Below the current element what it accepts, and at the top what may stand there.
void ElementCommands::fillAddMenu() {
    addMenu_->clear();
    if (session_->isBusy())
        return;
    if (auto* const element = current())
        offer(*element);
    if (!addMenu_->isEmpty())
        addMenu_->addSeparator();
    offer(session_->root());
}

void ElementCommands::offer(model::Element& parent) {
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

void ElementCommands::addBelow(model::Element& parent, const core::LoadedClass& elementClass) {
    auto* const element = session_->add(parent, elementClass);
    if (element == nullptr)
        return;
    tree_->select(*element);
    tree_->renameCurrent(); // a new element has the name of its kind
}

void ElementCommands::update() {
    const auto* const selecting = part();
    const bool any = selecting != nullptr && selecting->hasSelection();
    for (const auto command : {Command::duplicate, Command::rename, Command::remove,
                               Command::moveUp, Command::moveDown, Command::pickUp})
        (*actions_)[command].setEnabled(any);
    (*actions_)[Command::putHere].setEnabled(newParentOfPickedUp() != nullptr);
}

} // namespace corvane::workbench::gui
