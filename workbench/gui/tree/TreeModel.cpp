#include "workbench/gui/tree/TreeModel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"

#include <QGuiApplication>
#include <QMimeData>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TreeModel";
constexpr std::size_t kFirstFetch = 1000;

QString mimeType() { return QStringLiteral("application/x-corvane-elements"); }

bool hasOwnErrors(model::Element& element) {
    return element.getSkillElement()->localPropertyErrorCount() != 0;
}

} // namespace

TreeModel::TreeModel(ProjectSession& session, ClassIcons& icons, QObject* parent)
    : QAbstractItemModel(parent), session_(&session), icons_(&icons) {
    connectToSession();
}

void TreeModel::connectToSession() {
    connect(session_, &ProjectSession::resetBegins, this, [this] {
        beginResetModel();
        detached_ = true;
    });
    connect(session_, &ProjectSession::resetEnds, this, [this] {
        filter_.reset();
        fetched_.clear();
        rowHints_.clear();
        detached_ = false;
        endResetModel();
    });
    connect(session_, &ProjectSession::insertionBegins, this,
            [this](model::Element* above, std::size_t position, std::size_t count) {
                beginInsertion(*above, position, count);
            });
    connect(session_, &ProjectSession::insertionEnds, this, [this] {
        if (std::exchange(pending_, Pending::nothing) == Pending::rows)
            endInsertRows();
    });
    connect(session_, &ProjectSession::removalBegins, this,
            [this](model::Element* above, std::size_t position, std::size_t count) {
                beginRemoval(*above, position, count);
            });
    connect(session_, &ProjectSession::removalEnds, this, [this] {
        if (std::exchange(pending_, Pending::nothing) == Pending::rows)
            endRemoveRows();
    });
    connect(session_, &ProjectSession::elementRenamed, this, [this](model::Element* element) {
        const auto changed = known(*element);
        if (changed.isValid())
            emit dataChanged(changed, changed);
    });
}

// A filter shows what it found: it is looked for anew after each change of the tree.
void TreeModel::beginInsertion(model::Element& parent, std::size_t position, std::size_t count) {
    setFilter(std::nullopt);
    const auto shown = fetchedCount(parent);
    const bool allShown = shown == childCount(parent);
    if (!allShown && position >= shown)
        return;
    beginInsertRows(known(parent), static_cast<int>(position),
                    static_cast<int>(position + count) - 1);
    fetched_[&parent] = shown + count;
    pending_ = Pending::rows;
}

void TreeModel::beginRemoval(model::Element& parent, std::size_t position, std::size_t count) {
    setFilter(std::nullopt);
    const auto shown = fetchedCount(parent);
    if (position >= shown)
        return;
    const auto removed = std::min(count, shown - position);
    beginRemoveRows(known(parent), static_cast<int>(position),
                    static_cast<int>(position + removed) - 1);
    fetched_[&parent] = shown - removed;
    pending_ = Pending::rows;
}

void TreeModel::setFilter(std::optional<FilteredChildren> filter) {
    if (!filter && !filter_)
        return;
    beginResetModel();
    filter_ = std::move(filter);
    rowHints_.clear();
    endResetModel();
}

std::size_t TreeModel::childCount(const model::Element& parent) const {
    if (!filter_)
        return parent.childElements().size();
    const auto found = filter_->find(&parent);
    return found == filter_->end() ? 0 : found->second.size();
}

std::size_t TreeModel::fetchedCount(const model::Element& parent) const {
    const auto count = childCount(parent);
    if (filter_)
        return count;
    const auto found = fetched_.find(&parent);
    return std::min(count, found == fetched_.end() ? kFirstFetch : found->second);
}

model::Element* TreeModel::childAt(const model::Element& parent, std::size_t row) const {
    return filter_ ? filter_->at(&parent)[row] : parent.childElements()[row].get();
}

model::Element& TreeModel::parentOf(model::Element& element) const {
    return session_->project().model().parentOf(element);
}

int TreeModel::rowOf(const model::Element& element, const model::Element& parent) const {
    const auto count = childCount(parent);
    auto& hint = rowHints_[&element];
    if (static_cast<std::size_t>(hint) < count &&
        childAt(parent, static_cast<std::size_t>(hint)) == &element)
        return hint;
    for (std::size_t row = 0; row != count; ++row)
        if (childAt(parent, row) == &element)
            return hint = static_cast<int>(row);
    rowHints_.erase(&element);
    return -1;
}

model::Element& TreeModel::elementAt(const QModelIndex& index) const {
    if (!index.isValid() || detached_)
        return session_->root();
    const auto& parent = *static_cast<const model::Element*>(index.internalPointer());
    return *childAt(parent, static_cast<std::size_t>(index.row()));
}

QModelIndex TreeModel::known(model::Element& element) const {
    if (&element == &session_->root())
        return {};
    auto& above = parentOf(element);
    const int row = rowOf(element, above);
    if (row < 0 || static_cast<std::size_t>(row) >= fetchedCount(above))
        return {};
    return createIndex(row, 0, &above);
}

QModelIndex TreeModel::indexOf(model::Element& element) {
    if (detached_ || element.tree() != &session_->project().model())
        return {};
    for (auto* one = &element; one != nullptr; one = one->parentElement()) {
        auto& above = parentOf(*one);
        const int row = rowOf(*one, above);
        if (row < 0)
            return {};
        const auto shown = fetchedCount(above);
        if (static_cast<std::size_t>(row) < shown)
            continue;
        const auto wanted =
            std::min(childCount(above), static_cast<std::size_t>(row) + kFirstFetch);
        const auto parentIndex = indexOf(above);
        beginInsertRows(parentIndex, static_cast<int>(shown), static_cast<int>(wanted) - 1);
        fetched_[&above] = wanted;
        endInsertRows();
    }
    return known(element);
}

QModelIndex TreeModel::index(int row, int column, const QModelIndex& parent) const {
    if (detached_ || row < 0 || column != 0)
        return {};
    auto& above = elementAt(parent);
    if (static_cast<std::size_t>(row) >= fetchedCount(above))
        return {};
    return createIndex(row, 0, &above);
}

QModelIndex TreeModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || detached_)
        return {};
    auto* const above = static_cast<model::Element*>(index.internalPointer());
    if (above == &session_->root())
        return {};
    auto& aboveThat = parentOf(*above);
    return createIndex(rowOf(*above, aboveThat), 0, &aboveThat);
}

int TreeModel::rowCount(const QModelIndex& parent) const {
    return detached_ ? 0 : static_cast<int>(fetchedCount(elementAt(parent)));
}

bool TreeModel::hasChildren(const QModelIndex& parent) const {
    return !detached_ && childCount(elementAt(parent)) != 0;
}

bool TreeModel::canFetchMore(const QModelIndex& parent) const {
    if (detached_)
        return false;
    const auto& above = elementAt(parent);
    return fetchedCount(above) < childCount(above);
}

// As much again as there is, so that whoever wants the end of a long list gets there soon.
void TreeModel::fetchMore(const QModelIndex& parent) {
    const auto& above = elementAt(parent);
    const auto shown = fetchedCount(above);
    const auto wanted = std::min(childCount(above), shown + std::max(shown, kFirstFetch));
    if (wanted == shown)
        return;
    beginInsertRows(parent, static_cast<int>(shown), static_cast<int>(wanted) - 1);
    fetched_[&above] = wanted;
    endInsertRows();
}

QVariant TreeModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || detached_)
        return {};
    auto& element = elementAt(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return toQt(element.name());
    case Qt::DecorationRole:
        return icons_->of(element.elementClass());
    case Qt::ForegroundRole:
        if (pickedUp_.contains(&element))
            return QGuiApplication::palette().color(QPalette::PlaceholderText);
        if (!session_->isBusy() && hasOwnErrors(element))
            return QGuiApplication::palette().color(kErrorRole);
        return {};
    case Qt::ToolTipRole:
        return withoutFormat(describe(element));
    case kTroubledRole:
        return troubled_.contains(&element);
    case kSummaryRole:
        return summariesShown_ ? summaryOf(element).join(QStringLiteral("  ")) : QString();
    case kShortSummaryRole:
        return summariesShown_ ? (QStringList(QString()) + summaryOf(element)).last() : QString();
    case Qt::AccessibleDescriptionRole:
        if (!session_->isBusy() && hasOwnErrors(element))
            return translated(kContext, "{}, has problems", {describe(element)});
        if (troubled_.contains(&element))
            return translated(kContext, "{}, has problems below it", {describe(element)});
        return describe(element);
    default:
        return {};
    }
}

// Only the owner of the model may ask a class.
QString TreeModel::describe(const model::Element& element) const {
    if (session_->isBusy())
        return {};
    return (QStringList(toQt(element.elementClass().displayName())) + summaryOf(element))
        .join(QStringLiteral(", "));
}

QStringList TreeModel::summaryOf(const model::Element& element) const {
    if (session_->isBusy())
        return {};
    const auto summary = element.getSkillElement()->summary();
    QStringList words{toQt(summary.type), toQt(summary.address)};
    words.removeAll(QString());
    return words;
}

bool TreeModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (!index.isValid() || role != Qt::EditRole)
        return false;
    auto& element = elementAt(index);
    const auto name = value.toString();
    if (name != toQt(element.name()))
        session_->rename(element, name);
    return true;
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable | Qt::ItemIsDragEnabled |
           Qt::ItemIsDropEnabled;
}

QStringList TreeModel::mimeTypes() const { return {mimeType()}; }

// Elements are dragged within this window only, so the data says no more than that.
QMimeData* TreeModel::mimeData(const QModelIndexList& indexes) const {
    dragged_.clear();
    for (const auto& index : indexes)
        dragged_.push_back(&elementAt(index));
    auto* const data = new QMimeData;
    data->setData(mimeType(), QByteArrayLiteral("dragged"));
    return data;
}

bool TreeModel::canDropMimeData(const QMimeData* data, Qt::DropAction, int, int,
                                const QModelIndex& parent) const {
    return data->hasFormat(mimeType()) && !detached_ && !session_->isBusy() && !filter_ &&
           session_->editor().canMove(dragged_, elementAt(parent));
}

bool TreeModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                             const QModelIndex& parent) {
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    auto& target = elementAt(parent);
    const auto position = row < 0 ? target.childElements().size() : static_cast<std::size_t>(row);
    // The view is still in the middle of the drag.
    QMetaObject::invokeMethod(
        this,
        [this, moved = std::exchange(dragged_, {}), &target, position] {
            session_->move(moved, target, position);
        },
        Qt::QueuedConnection);
    return true;
}

} // namespace corvane::workbench::gui
