#include "workbench/gui/table/PastedRows.hpp"

#include "workbench/core/edit/workspace/FieldText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <algorithm>
#include <optional>
#include <ranges>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::PastedRows";
constexpr std::size_t kTellEvery = 16; // rows

[[noreturn]] void refuse(std::string_view english, std::initializer_list<QString> arguments = {}) {
    throw core::EditError(toUtf8(translated(kContext, english, arguments)));
}

/// As the editor names a field of an element.
[[noreturn]] void refuseCell(const model::Element& element, const QString& heading,
                             const QString& reason) {
    refuse("{}: {}: {}", {toQt(std::string_view(element.path())), heading, reason});
}

QString headingOf(const TableModel& model, int column) {
    return model.headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
}

/// The first column of the table with a heading that none of `taken` has been given.
int columnWith(const TableModel& model, const QString& heading, const std::vector<int>& taken) {
    for (int column = 0; column != model.columnCount(); ++column)
        if (headingOf(model, column).compare(heading.trimmed(), Qt::CaseInsensitive) == 0 &&
            std::ranges::find(taken, column) == taken.end())
            return column;
    return -1;
}

} // namespace

PastedRows::PastedRows(const TableModel& model, std::vector<QStringList> lines, const Place& place)
    : class_(model.elementClass()), lines_(std::move(lines)), hasHeadings_(takeHeadings(model)) {
    if (!hasHeadings_)
        for (const int column : place.columns)
            columns_.push_back(columnOf(model, column));
    const auto widest = std::ranges::max(lines_, {}, &QStringList::size).size();
    if (!hasHeadings_ && static_cast<std::size_t>(widest) > columns_.size())
        refuse("The text has {} columns, but from the current cell on there are {}",
               {QString::number(widest), QString::number(columns_.size())});
    if (find(Column::Kind::name) != nullptr && find(Column::Kind::location) != nullptr &&
        hasHeadings_)
        rows_.resize(lines_.size());
    else
        takePlace(model, place);
}

// A line of values may hold the text of a heading by chance, but hardly two of them.
bool PastedRows::takeHeadings(const TableModel& model) {
    if (lines_.size() < 2)
        return false;
    std::vector<int> columns;
    for (const auto& cell : lines_.front())
        columns.push_back(cell.isEmpty() ? -1 : columnWith(model, cell, columns));
    const auto filled =
        std::ranges::count_if(lines_.front(), [](const QString& cell) { return !cell.isEmpty(); });
    const auto known = std::ranges::count_if(columns, [](int column) { return column >= 0; });
    if (known == 0 || (known == 1 && filled != 1))
        return false;
    for (const int column : columns)
        columns_.push_back(column < 0 ? Column() : columnOf(model, column));
    lines_.erase(lines_.begin());
    return true;
}

void PastedRows::takePlace(const TableModel& model, const Place& place) {
    const bool repeats = lines_.size() == 1 && place.selected;
    const auto count = repeats ? place.rows.size() : lines_.size();
    if (count > place.rows.size())
        refuse("The text has {} rows, but from the current row on there are {}",
               {formatted(count), formatted(place.rows.size())});
    for (const int row : place.rows | std::views::take(count))
        rows_.push_back(&model.elementAt(row));
}

PastedRows::Column PastedRows::columnOf(const TableModel& model, int column) {
    using Kind = Column::Kind;
    if (column == static_cast<int>(FixedColumn::name))
        return {Kind::name, headingOf(model, column), {}};
    if (column == static_cast<int>(FixedColumn::location))
        return {Kind::location, headingOf(model, column), {}};
    return {Kind::field, headingOf(model, column), std::string(model.keyOf(column))};
}

const PastedRows::Column* PastedRows::find(Column::Kind kind) const {
    const auto found = std::ranges::find(columns_, kind, &Column::kind);
    return found == columns_.end() ? nullptr : &*found;
}

bool PastedRows::mayRename() const {
    return find(Column::Kind::name) != nullptr && !rows_.empty() && rows_.front() != nullptr;
}

const QStringList& PastedRows::cellsFor(std::size_t row) const {
    return lines_[lines_.size() == 1 ? 0 : row];
}

void PastedRows::enter(core::Editor& editor, BusyRunner& runner) const {
    core::FormSeries forms;
    for (std::size_t row = 0; row != rows_.size(); ++row) {
        if (row % kTellEvery == 0 && !runner.tell(row, rows_.size()))
            throw core::EditStopped();
        try {
            enterLine(editor, row, forms);
        } catch (const core::EditError& refusal) {
            const auto line = (lines_.size() == 1 ? 0 : row) + (hasHeadings_ ? 2 : 1);
            refuse("Row {} of the text: {}",
                   {formatted(line), toQt(std::string_view(refusal.what()))});
        }
    }
}

model::Element& PastedRows::elementOf(const core::Editor& editor, std::size_t row) const {
    if (rows_[row] != nullptr)
        return *rows_[row];
    const auto cellOf = [&](Column::Kind kind) {
        return cellsFor(row).value(find(kind) - columns_.data());
    };
    auto path = toUtf8(cellOf(Column::Kind::location));
    if (!path.ends_with('/'))
        path += '/';
    path += model::escapeName(toUtf8(cellOf(Column::Kind::name)));
    auto* const element = editor.project().model().findElement(path);
    if (element == nullptr || &element->elementClass() != class_)
        refuse("there is no such element as {}", {toQt(std::string_view(path))});
    return *element;
}

// The name comes last: until then a refusal calls the element as the user knows it.
void PastedRows::enterLine(core::Editor& editor, std::size_t row, core::FormSeries& forms) const {
    auto& element = elementOf(editor, row);
    const auto& cells = cellsFor(row);
    const auto cellOf = [&](const Column* column) {
        const auto at = column == nullptr ? cells.size() : column - columns_.data();
        return at >= cells.size() ? std::nullopt : std::optional(cells[at]);
    };
    const auto* const location = hasHeadings_ ? nullptr : find(Column::Kind::location);
    if (const auto cell = cellOf(location);
        cell && *cell != fixedCell(element, FixedColumn::location))
        refuseCell(element, location->heading,
                   translated(kContext, "an element is moved in the tree"));
    enterFields(editor, element, cells, forms);
    if (const auto name = cellOf(find(Column::Kind::name)))
        editor.rename(element, toUtf8(*name));
}

void PastedRows::enterFields(core::Editor& editor, model::Element& element,
                             const QStringList& cells, core::FormSeries& forms) const {
    const auto& form = forms.of(element);
    std::vector<core::FieldValue> values;
    for (std::size_t i = 0; i != columns_.size(); ++i) {
        const auto& column = columns_[i];
        auto* const control = column.kind == Column::Kind::field ? form.find(column.key) : nullptr;
        if (control == nullptr || static_cast<qsizetype>(i) >= cells.size())
            continue;
        const auto& cell = cells[static_cast<qsizetype>(i)];
        // What is only shown comes along with what it is made from.
        const bool onlyShown = control->storedValue() == ui::StoredValue();
        if (readCell(*control).text == cell || (onlyShown && hasHeadings_))
            continue;
        auto value = core::valueFromText(*control, toUtf16(cell));
        if (!value)
            refuseCell(element, column.heading, toQt(value.error()));
        values.push_back({column.key, *std::move(value)});
    }
    editor.setValues(element, values);
}

} // namespace corvane::workbench::gui
