#include "workbench/gui/table/ColumnLayout.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <algorithm>
#include <utility>
#include <vector>

namespace corvane::workbench::gui {

namespace {

constexpr QLatin1Char kHidden('-'); // before the key of a hidden column
constexpr QLatin1Char kShown('+');

} // namespace

ColumnLayout::ColumnLayout(TableModel& model, QHeaderView& header)
    : QObject(&header), model_(&model), header_(&header) {
    // After the header has taken over the columns of another class.
    connect(model_, &QAbstractItemModel::modelReset, this, &ColumnLayout::restore);
    connect(header_, &QHeaderView::sectionMoved, this, [this](int, int from, int to) {
        if (restoring_)
            return;
        if (from == 0 || to == 0) {
            restoring_ = true;
            header_->moveSection(header_->visualIndex(0), 0);
            restoring_ = false;
        }
        keep();
    });
}

void ColumnLayout::setShown(int column, bool shown) {
    header_->setSectionHidden(column, !shown);
    keep();
}

void ColumnLayout::reset() {
    apply({});
    keep();
}

QString ColumnLayout::kind() const {
    return toQt(std::string_view(model_->elementClass()->uuid().toString()));
}

QString ColumnLayout::keyOf(int column) const {
    return column < kFixedColumns ? QStringLiteral("@%1").arg(column) : toQt(model_->keyOf(column));
}

void ColumnLayout::restore() {
    if (model_->hasFields() && header_->count() == model_->columnCount())
        apply(settings::columns(kind()));
}

void ColumnLayout::keep() const {
    if (!model_->hasFields() || header_->count() != model_->columnCount())
        return;
    QStringList columns;
    for (int place = 0; place != header_->count(); ++place) {
        const int column = header_->logicalIndex(place);
        columns += (header_->isSectionHidden(column) ? kHidden : kShown) + keyOf(column);
    }
    settings::setColumns(kind(), columns);
}

// Columns that are not mentioned, as those that a newer plug-in has, come last.
void ColumnLayout::apply(const QStringList& columns) {
    restoring_ = true;
    const auto placeOf = [&](int column) {
        const auto key = keyOf(column);
        const auto found = std::ranges::find_if(
            columns, [&](const QString& one) { return QStringView(one).mid(1) == key; });
        return column == 0 ? -1 : static_cast<int>(found - columns.begin());
    };
    std::vector<std::pair<int, int>> order; // place in `columns`, column
    for (int column = 0; column != header_->count(); ++column) {
        order.emplace_back(placeOf(column), column);
        header_->setSectionHidden(column, column != 0 && columns.contains(kHidden + keyOf(column)));
    }
    std::ranges::sort(order);
    for (int place = 0; place != header_->count(); ++place)
        header_->moveSection(header_->visualIndex(order[static_cast<std::size_t>(place)].second),
                             place);
    restoring_ = false;
}

} // namespace corvane::workbench::gui
