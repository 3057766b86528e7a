#include "workbench/gui/table/RowText.hpp"

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/table/Cell.hpp"
#include "workbench/gui/table/TableOrder.hpp"

namespace corvane::workbench::gui {

namespace {

constexpr std::size_t kTellEvery = 256; // rows

QStringList cellsOf(model::Element& element, const std::vector<int>& columns,
                    core::FormSeries& forms) {
    const auto controls = cellControls(forms.of(element));
    QStringList cells;
    for (const int column : columns) {
        const auto control = static_cast<std::size_t>(column - kFixedColumns);
        if (column < kFixedColumns)
            cells += fixedCell(element, static_cast<FixedColumn>(column));
        else
            cells += control < controls.size() ? readCell(*controls[control]).text : QString();
    }
    return cells;
}

} // namespace

QString lineOfCells(const QStringList& cells) {
    QStringList clean = cells;
    for (auto& cell : clean)
        for (auto& one : cell)
            if (one == QLatin1Char('\t') || one == QLatin1Char('\n') || one == QLatin1Char('\r'))
                one = QLatin1Char(' ');
    return clean.join(QLatin1Char('\t')) + QLatin1Char('\n');
}

QString rowsAsText(const std::vector<model::Element*>& rows, const std::vector<int>& columns,
                   BusyRunner& runner) {
    core::FormSeries forms;
    QString text;
    for (std::size_t row = 0; row != rows.size(); ++row) {
        if (row % kTellEvery == 0 && !runner.tell(row, rows.size()))
            return {};
        text += lineOfCells(cellsOf(*rows[row], columns, forms));
    }
    return text;
}

} // namespace corvane::workbench::gui
