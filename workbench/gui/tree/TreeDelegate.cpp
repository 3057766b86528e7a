#include "workbench/gui/tree/TreeDelegate.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

#include <QPainter>

namespace corvane::workbench::gui {

namespace {

constexpr int kSignSize = 14;
constexpr int kSignMargin = 4;
constexpr int kSummaryGap = 16;
constexpr int kLeastSummary = 24; // less of it says nothing

} // namespace

void TreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    EntryDelegate::paint(painter, option, index);
    const QRect line = option.rect;
    const bool hasSign = !view_->isExpanded(index) && index.data(TreeModel::kTroubledRole).toBool();
    const QRect sign(line.right() - kSignMargin - kSignSize, line.center().y() - kSignSize / 2,
                     kSignSize, kSignSize);
    paintSummary(*painter, option, index, hasSign ? sign.left() : line.right());
    if (!hasSign)
        return;
    painter->fillRect(sign, option.palette.base());
    icon("error").paint(painter, sign);
}

// Up to `end`, in a paler colour than the name.
void TreeDelegate::paintSummary(QPainter& painter, const QStyleOptionViewItem& option,
                                const QModelIndex& index, int end) const {
    auto summary = index.data(TreeModel::kSummaryRole).toString();
    if (summary.isEmpty())
        return;
    QStyleOptionViewItem item = option;
    initStyleOption(&item, index);
    auto place = view_->style()->subElementRect(QStyle::SE_ItemViewItemText, &item, view_);
    place.setLeft(place.left() + item.fontMetrics.horizontalAdvance(item.text) + kSummaryGap);
    place.setRight(end - kSignMargin);
    if (place.width() < kLeastSummary)
        return;
    if (item.fontMetrics.horizontalAdvance(summary) > place.width())
        summary = index.data(TreeModel::kShortSummaryRole).toString();
    const auto colour = item.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText
                                                                    : QPalette::PlaceholderText;
    painter.save();
    painter.setFont(item.font);
    painter.setPen(item.palette.color(colour));
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                     item.fontMetrics.elidedText(summary, Qt::ElideRight, place.width()));
    painter.restore();
}

} // namespace corvane::workbench::gui
