#pragma once

#include "workbench/core/edit/Editor.hpp"
#include "workbench/gui/table/TableModel.hpp"

#include <QStringList>

#include <string>
#include <vector>

namespace corvane::workbench::gui {

/// What a text of lines and cells, as spreadsheets copy them, enters into the table.
class PastedRows {
public:
    /// Where the user wants it.
    struct Place {
        std::vector<int> columns; // that are shown, from the current one on
        std::vector<int> rows;    // that are selected, or from the current one on
        bool selected = false;
    };

    /// Where the first line names columns, they are taken by their headings; and where name and
    /// location are among them, so are the rows, wherever they stand. Else lines and cells go to
    /// the place; a single line goes to each of the selected rows. Throws core::EditError where the
    /// place is too small.
    PastedRows(const TableModel& model, std::vector<QStringList> lines, const Place& place);

    [[nodiscard]] std::size_t count() const { return rows_.size(); }
    /// Whether elements may get other names.
    [[nodiscard]] bool mayRename() const;

    /// Enters all cells, each as if it were typed, but for those that hold the same already. Throws
    /// core::EditError, naming line and column, at the first one that is refused. Tells `runner`
    /// how far it is. The calling thread owns the model.
    void enter(core::Editor& editor, BusyRunner& runner) const;

private:
    /// What a column of the text stands for.
    struct Column {
        enum class Kind { unknown, name, location, field } kind = Kind::unknown;
        QString heading;
        std::string key; // of a field
    };

    bool takeHeadings(const TableModel& model);
    void takePlace(const TableModel& model, const Place& place);
    [[nodiscard]] static Column columnOf(const TableModel& model, int column);
    [[nodiscard]] const Column* find(Column::Kind kind) const;

    void enterLine(core::Editor& editor, std::size_t row, core::FormSeries& forms) const;
    void enterFields(core::Editor& editor, model::Element& element, const QStringList& cells,
                     core::FormSeries& forms) const;
    [[nodiscard]] model::Element& elementOf(const core::Editor& editor, std::size_t row) const;
    /// The line that goes to a row.
    [[nodiscard]] const QStringList& cellsFor(std::size_t row) const;

    const skill::Element::Class* class_;
    std::vector<QStringList> lines_;    // without the headings
    std::vector<Column> columns_;       // of each cell of a line
    std::vector<model::Element*> rows_; // null where name and location say which
    bool hasHeadings_;
};

} // namespace corvane::workbench::gui
