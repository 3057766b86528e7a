#pragma once

#include <QTreeView>

namespace corvane::workbench::gui {

/// The view of the project's tree, which differs from others in what it draws.
class ProjectView final : public QTreeView {
    Q_OBJECT

public:
    using QTreeView::QTreeView;

protected:
    /// The arrow of a selected line takes the colour of its text.
    void drawBranches(QPainter* painter, const QRect& rect,
                      const QModelIndex& index) const override;
    /// What is dragged is shown beside the pointer, so that the place where it would be dropped
    /// stays in sight.
    void startDrag(Qt::DropActions supportedActions) override;
};

} // namespace corvane::workbench::gui
