#pragma once

#include "workbench/core/import/ImportPreview.hpp"

#include <QAbstractItemModel>
#include <QString>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace corvane::workbench::gui {

/// The changes of an import as a tree: the kinds of changes with their counts, below each the
/// elements, and below each of these the members with what they held before and hold then. Texts
/// are made for the rows that are looked at, so that a hundred thousand changes cost no more than
/// their list.
class ChangesModel final : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Column : std::uint8_t { kElement, kBefore, kAfter, kColumnCount };

    explicit ChangesModel(QObject* parent);

    void setChanges(std::shared_ptr<const core::ImportPreview> preview);
    /// Shows the elements only whose old or new paths contain a text, whatever the case of its
    /// letters.
    void setFilter(const QString& text);

    /// The change that a row shows or belongs to; null for the row of a kind.
    [[nodiscard]] const core::PreviewedChange* changeAt(const QModelIndex& index) const;
    /// The first row of the element with that place at the top of the document; invalid where it
    /// has none.
    [[nodiscard]] QModelIndex indexOfTop(std::size_t position) const;

    [[nodiscard]] QModelIndex index(int row, int column,
                                    const QModelIndex& parent = {}) const override;
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override;
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

private:
    using Change = core::ImportedElement::Change;
    static constexpr std::size_t kKinds = 6; // as many as there are of Change

    /// The changes of one kind.
    struct Group {
        std::size_t kind = 0;
        std::size_t count = 0;          // with those that are filtered out
        std::vector<std::size_t> shown; // places among all changes, ascending
    };

    void collect();
    [[nodiscard]] QString textOf(const Group& group) const;
    [[nodiscard]] QString textOf(const core::PreviewedChange& change, int column) const;
    [[nodiscard]] QString textOf(const core::MemberChange& member, int column) const;
    [[nodiscard]] QString textOf(const QModelIndex& index) const;

    [[nodiscard]] const std::vector<core::PreviewedChange>& changes() const {
        return preview_->changes;
    }

    std::shared_ptr<const core::ImportPreview> preview_;
    std::vector<Group> groups_; // of the kinds that there are
    QString filter_;
};

} // namespace corvane::workbench::gui
