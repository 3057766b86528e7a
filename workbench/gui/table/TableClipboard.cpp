#include "workbench/gui/table/TableClipboard.hpp"

#include "workbench/core/edit/workspace/Fields.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/table/RowText.hpp"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>

#include <algorithm>
#include <iterator>
#include <memory>
#include <numeric>
#include <ranges>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TableClipboard";

} // namespace

TableClipboard::TableClipboard(ProjectSession& session, TableModel& model, QTableView& view)
    : QObject(&view), session_(&session), model_(&model), view_(&view) {}

std::vector<int> TableClipboard::selectedRows() const {
    std::vector<int> rows;
    for (const auto& range : view_->selectionModel()->selection()) {
        std::ranges::copy(std::views::iota(range.top(), range.bottom() + 1),
                          std::back_inserter(rows));
    }
    std::ranges::sort(rows);
    return rows;
}

std::vector<int> TableClipboard::shownColumns() const {
    const auto& header = *view_->horizontalHeader();
    std::vector<int> columns;
    for (int place = 0; place != header.count(); ++place)
        if (const int column = header.logicalIndex(place); !header.isSectionHidden(column))
            columns.push_back(column);
    return columns;
}

void TableClipboard::copy() {
    if (session_->isBusy() || !canCopy())
        return;
    const auto columns = shownColumns();
    QStringList headings;
    for (const int column : columns)
        headings += model_->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
    std::vector<model::Element*> elements;
    for (const int row : selectedRows())
        elements.push_back(&model_->elementAt(row));
    auto rows = std::make_shared<QString>();
    session_->runner().run(
        translated(kContext, "Copying"),
        [&runner = session_->runner(), rows, columns, elements = std::move(elements)] {
            *rows = rowsAsText(elements, columns, runner);
        },
        [rows, headings](const std::exception_ptr& failure) {
            if (!failure && !rows->isEmpty())
                QGuiApplication::clipboard()->setText(lineOfCells(headings) + *rows);
        },
        BusyRunner::Stoppable::yes);
}

// A selection of a single row is where the keyboard is, and no more than that.
PastedRows::Place TableClipboard::place() const {
    PastedRows::Place place;
    const auto current = view_->currentIndex();
    place.columns = shownColumns();
    place.columns.erase(place.columns.begin(), std::ranges::find(place.columns, current.column()));
    place.rows = selectedRows();
    place.selected = place.rows.size() > 1;
    if (!place.selected) {
        const auto below = std::views::iota(current.row(), model_->rowCount());
        place.rows.assign(below.begin(), below.end());
    }
    return place;
}

void TableClipboard::paste() {
    auto lines = cellsOfText(QGuiApplication::clipboard()->text());
    if (session_->isBusy() || !canPaste() || lines.empty())
        return;
    try {
        auto rows = std::make_shared<PastedRows>(*model_, std::move(lines), place());
        const auto title = counted(kContext, "Paste 1 row", "Paste {} rows", rows->count());
        session_->change(title,
                         rows->mayRename() ? ProjectSession::Effect::structure
                                           : ProjectSession::Effect::values,
                         [rows, &runner = session_->runner()](core::Editor& editor) {
                             rows->enter(editor, runner);
                         });
    } catch (const core::EditError&) {
        emit session_->refused(messageOf(std::current_exception()));
    }
}

bool TableClipboard::canFillDown() const {
    const auto ranges = view_->selectionModel()->selection();
    const auto rows =
        std::accumulate(ranges.begin(), ranges.end(), 0, [](int sum, const auto& range) {
            return std::max(sum, 0) + range.height();
        });
    return rows > 1 && view_->currentIndex().column() >= kFixedColumns;
}

void TableClipboard::fillDown() {
    if (session_->isBusy() || !canFillDown())
        return;
    const int column = view_->currentIndex().column();
    std::vector<model::Element*> elements;
    for (const int row : selectedRows())
        elements.push_back(&model_->elementAt(row));
    const core::OpenForm form(*elements.front());
    auto& control = core::fieldWithKey(form, model_->keyOf(column));
    elements.erase(elements.begin());
    session_->setFieldOfAll(std::move(elements), control, control.value());
}

} // namespace corvane::workbench::gui
