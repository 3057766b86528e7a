#include "workbench/gui/tree/ProjectView.hpp"

#include "workbench/gui/look/Text.hpp"

#include <QDrag>
#include <QMimeData>
#include <QPainter>
#include <QPolygonF>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ProjectView";
constexpr qreal kArrow = 4;         // half its width
constexpr int kPadding = 6;         // around the text of what is dragged
constexpr QPoint kBeside(-14, -14); // from the pointer to what is dragged

/// A line that says what is dragged.
QPixmap pictureOf(const QString& text, const QWidget& view) {
    const auto metrics = view.fontMetrics();
    const QSize size(metrics.horizontalAdvance(text) + 2 * kPadding, metrics.height() + kPadding);
    QPixmap picture(size * view.devicePixelRatioF());
    picture.setDevicePixelRatio(view.devicePixelRatioF());
    picture.fill(view.palette().color(QPalette::Highlight));
    QPainter painter(&picture);
    painter.setFont(view.font());
    painter.setPen(view.palette().color(QPalette::HighlightedText));
    painter.drawText(QRect(QPoint(), size), Qt::AlignCenter, text);
    return picture;
}

} // namespace

void ProjectView::drawBranches(QPainter* painter, const QRect& rect,
                               const QModelIndex& index) const {
    if (!selectionModel()->isSelected(index) || !model()->hasChildren(index)) {
        QTreeView::drawBranches(painter, rect, index);
        return;
    }
    const QRectF cell(rect.right() + 1 - indentation(), rect.top(), indentation(), rect.height());
    const auto middle = cell.center();
    const QPolygonF right{{middle + QPointF(-kArrow / 2, -kArrow), middle + QPointF(kArrow / 2, 0),
                           middle + QPointF(-kArrow / 2, kArrow)}};
    const QPolygonF down{{middle + QPointF(-kArrow, -kArrow / 2), middle + QPointF(0, kArrow / 2),
                          middle + QPointF(kArrow, -kArrow / 2)}};
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(palette().color(QPalette::HighlightedText), 1.5));
    painter->drawPolyline(isExpanded(index) ? down : right);
    painter->restore();
}

void ProjectView::startDrag(Qt::DropActions supportedActions) {
    const auto indexes = selectedIndexes();
    if (indexes.isEmpty())
        return;
    auto* const drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(indexes));
    drag->setPixmap(pictureOf(
        indexes.size() == 1 ? indexes.front().data().toString()
                            : translated(kContext, "{} elements",
                                         {formatted(static_cast<std::size_t>(indexes.size()))}),
        *this));
    drag->setHotSpot(kBeside);
    drag->exec(supportedActions, Qt::MoveAction);
}

} // namespace corvane::workbench::gui
