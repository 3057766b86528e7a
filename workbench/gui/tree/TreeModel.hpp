#pragma once

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <QAbstractItemModel>

#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace corvane::workbench::gui {

/// The elements that a filter lets through, with those above them: for each element that has any,
/// its children that are shown, in their order.
using FilteredChildren = std::unordered_map<const model::Element*, std::vector<model::Element*>>;

/// The project's tree for a view. It keeps nothing per element: of the children of an element only
/// the first so many are known to the view, which fetches more as it is scrolled, so that opening
/// an element with a million children costs no more than opening one with a thousand.
class TreeModel : public QAbstractItemModel {
    Q_OBJECT

public:
    TreeModel(ProjectSession& session, ClassIcons& icons, QObject* parent);

    /// The element of an index; the project's root for the invalid one.
    [[nodiscard]] model::Element& elementAt(const QModelIndex& index) const;

    /// The index of an element, after what is needed to show it has been fetched; invalid where the
    /// filter hides it.
    [[nodiscard]] QModelIndex indexOf(model::Element& element);

    /// What an element stands below: the project's root for those at the top.
    [[nodiscard]] model::Element& parentOf(model::Element& element) const;

    /// Shows only what is given; everything where nothing is.
    void setFilter(std::optional<FilteredChildren> filter);
    [[nodiscard]] bool isFiltered() const { return filter_.has_value(); }

    /// Says of an element whether something below it is wrong.
    static constexpr int kTroubledRole = Qt::UserRole;
    void setTroubled(std::unordered_set<const model::Element*> elements) {
        troubled_ = std::move(elements);
    }

    /// What is told of an element beside its name; empty where that is nothing, or switched off.
    static constexpr int kSummaryRole = Qt::UserRole + 1;
    /// As the former, without what can be spared where there is little room.
    static constexpr int kShortSummaryRole = Qt::UserRole + 2;
    void showSummaries(bool shown) { summariesShown_ = shown; }

    /// Shows elements as about to leave their places, from the next painting on.
    void setPickedUp(const std::vector<model::Element*>& elements) {
        pickedUp_ = {elements.begin(), elements.end()};
    }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override;
    [[nodiscard]] int columnCount(const QModelIndex&) const override { return 1; }
    [[nodiscard]] bool hasChildren(const QModelIndex& parent) const override;
    [[nodiscard]] bool canFetchMore(const QModelIndex& parent) const override;
    void fetchMore(const QModelIndex& parent) override;

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

    [[nodiscard]] Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData* mimeData(const QModelIndexList& indexes) const override;
    [[nodiscard]] bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row,
                                       int column, const QModelIndex& parent) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

private:
    void connectToSession();
    void beginInsertion(model::Element& parent, std::size_t position, std::size_t count);
    void beginRemoval(model::Element& parent, std::size_t position, std::size_t count);
    [[nodiscard]] std::size_t childCount(const model::Element& parent) const;
    [[nodiscard]] std::size_t fetchedCount(const model::Element& parent) const;
    [[nodiscard]] model::Element* childAt(const model::Element& parent, std::size_t row) const;
    [[nodiscard]] int rowOf(const model::Element& element, const model::Element& parent) const;
    [[nodiscard]] QModelIndex known(model::Element& element) const;
    [[nodiscard]] QString describe(const model::Element& element) const;
    [[nodiscard]] QStringList summaryOf(const model::Element& element) const;

    ProjectSession* session_;
    ClassIcons* icons_;
    std::optional<FilteredChildren> filter_;
    std::unordered_map<const model::Element*, std::size_t> fetched_; // where it is not the default
    mutable std::unordered_map<const model::Element*, int> rowHints_;
    mutable std::vector<model::Element*> dragged_;
    std::unordered_set<const model::Element*> pickedUp_;
    std::unordered_set<const model::Element*> troubled_; // only compared
    bool summariesShown_ = true;
    enum class Pending { nothing, rows } pending_ = Pending::nothing;
    bool detached_ = false; // the tree may not be looked at
};

} // namespace corvane::workbench::gui
