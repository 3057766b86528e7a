#pragma once

#include "workbench/gui/fields/EntryDelegate.hpp"

#include <QTreeView>

namespace corvane::workbench::gui {

/// Paints the elements of the tree: with what is told of them behind the name, as far as there is
/// room, and where one is collapsed and something below it is wrong, with a sign of that.
class TreeDelegate final : public EntryDelegate {
    Q_OBJECT

public:
    explicit TreeDelegate(QTreeView& view) : EntryDelegate(&view), view_(&view) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;

private:
    void paintSummary(QPainter& painter, const QStyleOptionViewItem& option,
                      const QModelIndex& index, int end) const;

    QTreeView* view_;
};

} // namespace corvane::workbench::gui
