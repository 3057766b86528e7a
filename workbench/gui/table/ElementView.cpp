#include "workbench/gui/table/ElementView.hpp"

#include <QCoreApplication>
#include <QHeaderView>
#include <QScrollBar>

#include <algorithm>

namespace corvane::workbench::gui {

ElementView::ElementView(QWidget* parent) : QTableView(parent), frozen_(new QTableView(this)) {
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    horizontalHeader()->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(horizontalHeader(), &QWidget::customContextMenuRequested, this,
            [this](const QPoint& place) {
                emit headingMenuWanted(horizontalHeader()->mapToGlobal(place));
            });
    // Which columns are selected as a whole a heading would ask of each row, and each time.
    horizontalHeader()->setHighlightSections(false);
    buildFrozen();
    connectFrozen();
    connectHeadings();
}

// Without a model as long as nobody sees it: a view of very many rows takes its time.
void ElementView::buildFrozen() {
    frozen_->setObjectName(QStringLiteral("frozenNames"));
    frozen_->setFocusPolicy(Qt::NoFocus);
    frozen_->setFrameShape(QFrame::NoFrame);
    frozen_->setAutoScroll(false);
    frozen_->setEditTriggers(NoEditTriggers);
    frozen_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    frozen_->setSelectionBehavior(SelectRows);
    frozen_->setSelectionMode(ExtendedSelection);
    frozen_->setAlternatingRowColors(true);
    frozen_->setShowGrid(false);
    frozen_->setWordWrap(false);
    frozen_->verticalHeader()->hide();
    frozen_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    frozen_->viewport()->installEventFilter(this);
    auto& headings = *frozen_->horizontalHeader();
    headings.setHighlightSections(false);
    headings.setSectionsClickable(true);
    headings.setSortIndicatorShown(true);
    headings.setSortIndicatorClearable(true);
    headings.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    headings.setContextMenuPolicy(Qt::CustomContextMenu);
    frozen_->hide();
}

void ElementView::connectFrozen() {
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &ElementView::updateFrozen);
    auto* const rows = verticalScrollBar();
    auto* const frozenRows = frozen_->verticalScrollBar();
    connect(rows, &QScrollBar::valueChanged, frozenRows, &QScrollBar::setValue);
    connect(frozenRows, &QScrollBar::valueChanged, rows, &QScrollBar::setValue);
    connect(frozen_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { edit(index, DoubleClicked, nullptr); });
    connect(frozen_, &QTableView::pressed, this, [this] { setFocus(Qt::MouseFocusReason); });
}

void ElementView::connectHeadings() {
    auto* const headings = horizontalHeader();
    auto* const frozenHeadings = frozen_->horizontalHeader();
    connect(headings, &QHeaderView::sectionResized, this, [this](int column) {
        if (column == 0)
            placeFrozen();
    });
    connect(frozenHeadings, &QHeaderView::sectionResized, this, [this](int column, int, int width) {
        if (column == 0 && frozen_->isVisible())
            setColumnWidth(0, width);
    });
    connect(headings, &QHeaderView::sortIndicatorChanged, frozenHeadings,
            &QHeaderView::setSortIndicator);
    connect(frozenHeadings, &QHeaderView::sortIndicatorChanged, headings,
            &QHeaderView::setSortIndicator);
    connect(frozenHeadings, &QWidget::customContextMenuRequested, this,
            [this, frozenHeadings](const QPoint& place) {
                emit headingMenuWanted(frozenHeadings->mapToGlobal(place));
            });
}

void ElementView::updateFrozen() {
    const bool wanted = horizontalScrollBar()->value() > 0 && model() != nullptr;
    if (wanted == frozen_->isVisibleTo(this))
        return;
    if (wanted) {
        frozen_->verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
        frozen_->setIconSize(iconSize());
        frozen_->setModel(model());
        frozen_->setSelectionModel(selectionModel());
        frozen_->horizontalHeader()->setSortIndicator(horizontalHeader()->sortIndicatorSection(),
                                                      horizontalHeader()->sortIndicatorOrder());
        placeFrozen();
        frozen_->show();
        frozen_->verticalScrollBar()->setValue(verticalScrollBar()->value());
    } else {
        frozen_->hide();
        frozen_->setModel(nullptr);
    }
}

// Over the headings, too: their first must not scroll away from what it names.
void ElementView::placeFrozen() {
    if (frozen_->model() == nullptr)
        return;
    frozen_->setColumnWidth(0, columnWidth(0));
    frozen_->horizontalHeader()->setFixedHeight(horizontalHeader()->height());
    const auto place = viewport()->geometry();
    const int above = horizontalHeader()->height();
    frozen_->setGeometry(place.left(), place.top() - above, std::min(columnWidth(0), place.width()),
                         place.height() + above);
}

void ElementView::updateGeometries() {
    QTableView::updateGeometries();
    placeFrozen();
}

// The frozen column has no need to be scrolled to, and hides what is below it.
void ElementView::scrollTo(const QModelIndex& index, ScrollHint hint) {
    const int before = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    if (index.column() == 0)
        horizontalScrollBar()->setValue(before);
    else if (const int hidden = columnWidth(0) - visualRect(index).left();
             horizontalScrollBar()->value() > 0 && hidden > 0)
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - hidden);
}

// What is edited is seen in its own place.
bool ElementView::edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) {
    const bool begins = trigger == AllEditTriggers || editTriggers().testFlag(trigger);
    if (index.column() == 0 && begins && state() != EditingState)
        horizontalScrollBar()->setValue(0);
    return QTableView::edit(index, trigger, event);
}

bool ElementView::eventFilter(QObject* watched, QEvent* event) {
    if (watched != frozen_->viewport() || event->type() != QEvent::Wheel)
        return QTableView::eventFilter(watched, event);
    QCoreApplication::sendEvent(viewport(), event);
    return true;
}

} // namespace corvane::workbench::gui
