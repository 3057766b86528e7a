#include "workbench/gui/tree/TreeDelegate.hpp"

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

#include <QPainter>

namespace corvane::workbench::gui {

namespace {

constexpr int kSignSize = 14;
constexpr int kSignMargin = 4;

} // namespace

void TreeDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
    EntryDelegate::paint(painter, option, index);
    if (view_->isExpanded(index) || !index.data(TreeModel::kTroubledRole).toBool())
        return;
    const QRect line = option.rect;
    const QRect sign(line.right() - kSignMargin - kSignSize, line.center().y() - kSignSize / 2,
                     kSignSize, kSignSize);
    painter->fillRect(sign, option.palette.base());
    icon("error").paint(painter, sign);
}

} // namespace corvane::workbench::gui
