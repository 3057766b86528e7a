#include "workbench/gui/preview/ChangesModel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/TextMatch.hpp"

#include <algorithm>
#include <string_view>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ChangesModel";

/// What the row of a kind says, in the order of the kinds; "{}" is their number.
constexpr std::array<std::string_view, 6> kKindTexts{
    "Added ({})",   "Updated ({})", "Moved to another address ({})",
    "Renamed ({})", "Removed ({})", "No longer in the file ({})"};

constexpr std::array<std::string_view, ChangesModel::kColumnCount> kHeadings{"Element", "Before",
                                                                             "Afterwards"};

// What an index says of the level that it belongs to: nothing for a kind, the group for a change,
// and for a member the change, counted from here on.
constexpr quintptr kFirstMember = 16;

bool isKind(const QModelIndex& index) { return index.internalId() == 0; }
bool isMember(const QModelIndex& index) { return index.internalId() >= kFirstMember; }
std::size_t groupOf(const QModelIndex& index) { return index.internalId() - 1; }
std::size_t changeOf(const QModelIndex& member) { return member.internalId() - kFirstMember; }

QString jsonText(const std::optional<std::string>& json) {
    return json ? toQt(std::string_view(*json)) : translated(kContext, "none");
}

} // namespace

ChangesModel::ChangesModel(QObject* parent)
    : QAbstractItemModel(parent), preview_(std::make_shared<const core::ImportPreview>()) {}

void ChangesModel::setChanges(std::shared_ptr<const core::ImportPreview> preview) {
    beginResetModel();
    preview_ = std::move(preview);
    collect();
    endResetModel();
}

void ChangesModel::setFilter(const QString& text) {
    if (text == filter_)
        return;
    beginResetModel();
    filter_ = text;
    collect();
    endResetModel();
}

void ChangesModel::collect() {
    static_assert(kKindTexts.size() == kKinds);
    std::array<Group, kKinds> groups;
    const TextMatch match(filter_);
    const auto isWanted = [&](const core::PreviewedChange& change) {
        return match.isIn(std::string_view(change.path)) ||
               (change.from && match.isIn(std::string_view(*change.from)));
    };
    for (std::size_t i = 0; i != changes().size(); ++i) {
        auto& group = groups[static_cast<std::size_t>(changes()[i].change)];
        ++group.count;
        if (isWanted(changes()[i]))
            group.shown.push_back(i);
    }
    groups_.clear();
    for (std::size_t kind = 0; kind != kKinds; ++kind) {
        groups[kind].kind = kind;
        if (!groups[kind].shown.empty())
            groups_.push_back(std::move(groups[kind]));
    }
}

const core::PreviewedChange* ChangesModel::changeAt(const QModelIndex& index) const {
    if (!index.isValid() || isKind(index))
        return nullptr;
    if (isMember(index))
        return &changes()[changeOf(index)];
    return &changes()[groups_[groupOf(index)].shown[static_cast<std::size_t>(index.row())]];
}

QModelIndex ChangesModel::indexOfTop(std::size_t position) const {
    for (std::size_t group = 0; group != groups_.size(); ++group) {
        const auto& shown = groups_[group].shown;
        const auto found = std::ranges::find_if(
            shown, [&](std::size_t place) { return changes()[place].position == position; });
        if (found != shown.end())
            return index(static_cast<int>(found - shown.begin()), kElement,
                         index(static_cast<int>(group), kElement));
    }
    return {};
}

QModelIndex ChangesModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    if (!parent.isValid())
        return createIndex(row, column, quintptr{0});
    if (isKind(parent))
        return createIndex(row, column, static_cast<quintptr>(parent.row()) + 1);
    const auto& shown = groups_[groupOf(parent)].shown;
    return createIndex(row, column, kFirstMember + shown[static_cast<std::size_t>(parent.row())]);
}

QModelIndex ChangesModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || isKind(index))
        return {};
    if (!isMember(index))
        return createIndex(static_cast<int>(groupOf(index)), 0, quintptr{0});
    const auto change = changeOf(index);
    const auto kind = static_cast<std::size_t>(changes()[change].change);
    const auto group = std::ranges::find(groups_, kind, &Group::kind);
    const auto place = std::ranges::lower_bound(group->shown, change);
    return createIndex(static_cast<int>(place - group->shown.begin()), 0,
                       static_cast<quintptr>(group - groups_.begin()) + 1);
}

int ChangesModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(groups_.size());
    if (parent.column() != 0 || isMember(parent))
        return 0;
    if (isKind(parent))
        return static_cast<int>(groups_[static_cast<std::size_t>(parent.row())].shown.size());
    return static_cast<int>(changeAt(parent)->members.size());
}

int ChangesModel::columnCount(const QModelIndex&) const { return kColumnCount; }

QString ChangesModel::textOf(const Group& group) const {
    const auto all = formatted(group.count);
    return translated(
        kContext, kKindTexts[group.kind],
        {group.shown.size() == group.count
             ? all
             : translated(kContext, "{} of {}", {formatted(group.shown.size()), all})});
}

QString ChangesModel::textOf(const core::PreviewedChange& change, int column) const {
    if (column == kElement)
        return toQt(std::string_view(change.path));
    // What is new was nowhere before, whatever the file calls it.
    if (column == kBefore && change.from && change.change != Change::added)
        return toQt(std::string_view(*change.from));
    return {};
}

QString ChangesModel::textOf(const core::MemberChange& member, int column) const {
    if (column == kElement)
        return toQt(std::string_view(member.name));
    return jsonText(column == kBefore ? member.before : member.after);
}

QString ChangesModel::textOf(const QModelIndex& index) const {
    if (isKind(index))
        return index.column() == kElement ? textOf(groups_[static_cast<std::size_t>(index.row())])
                                          : QString();
    const auto& change = *changeAt(index);
    if (isMember(index))
        return textOf(change.members[static_cast<std::size_t>(index.row())], index.column());
    return textOf(change, index.column());
}

QVariant ChangesModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid())
        return {};
    if (role == Qt::DisplayRole)
        return textOf(index);
    if (role == Qt::ToolTipRole)
        return withoutFormat(textOf(index));
    return {};
}

QVariant ChangesModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole || section < 0 ||
        section >= kColumnCount)
        return {};
    return translated(kContext, kHeadings[static_cast<std::size_t>(section)]);
}

} // namespace corvane::workbench::gui
