#include "workbench/gui/table/RowText.hpp"

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/table/Cell.hpp"
#include "workbench/gui/table/TableOrder.hpp"

#include <QStringView>

#include <algorithm>
#include <optional>
#include <utility>

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

bool endsCell(QChar one) {
    return one == QLatin1Char('\t') || one == QLatin1Char('\n') || one == QLatin1Char('\r');
}

/// The cell in quotes at the beginning of a text, and the text behind it; nothing where none ends
/// as it should.
std::optional<QString> takeQuoted(QStringView& text) {
    constexpr QLatin1Char kQuote('"');
    if (!text.startsWith(kQuote))
        return std::nullopt;
    QString cell;
    for (qsizetype at = 1;; ++at) {
        const auto end = text.indexOf(kQuote, at);
        if (end < 0)
            return std::nullopt;
        cell += text.sliced(at, end - at);
        at = end + 1;
        if (at == text.size() || endsCell(text[at])) {
            text = text.sliced(at);
            return cell;
        }
        if (text[at] != kQuote)
            return std::nullopt;
        cell += kQuote;
    }
}

QString takeCell(QStringView& text) {
    if (auto quoted = takeQuoted(text))
        return *std::move(quoted);
    const auto* const end = std::ranges::find_if(text, endsCell);
    const auto cell = text.first(end - text.begin());
    text = text.sliced(cell.size());
    return cell.toString();
}

} // namespace

std::vector<QStringList> cellsOfText(const QString& text) {
    std::vector<QStringList> lines;
    QStringView rest = text;
    while (!rest.isEmpty()) {
        QStringList cells{takeCell(rest)};
        while (rest.startsWith(QLatin1Char('\t'))) {
            rest = rest.sliced(1);
            cells += takeCell(rest);
        }
        lines.push_back(std::move(cells));
        if (rest.startsWith(QLatin1StringView("\r\n")))
            rest = rest.sliced(2);
        else if (!rest.isEmpty())
            rest = rest.sliced(1);
    }
    return lines;
}

QString lineOfCells(const QStringList& cells) {
    QStringList clean = cells;
    for (auto& cell : clean)
        for (auto& one : cell)
            if (endsCell(one))
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
