#pragma once

#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/table/Cell.hpp"
#include "workbench/gui/table/TableOrder.hpp"
#include "workbench/gui/table/TableSource.hpp"

#include <QAbstractTableModel>

#include <unordered_map>

namespace corvane::workbench::gui {

/// The elements of one class below another element as rows, with their names, their places and the
/// labels of their form as columns. Forms are built only for the rows that a view asks for.
class TableModel : public QAbstractTableModel {
    Q_OBJECT

public:
    TableModel(ProjectSession& session, ClassIcons& icons, QObject* parent);

    [[nodiscard]] TableSource& source() { return *source_; }
    [[nodiscard]] BusyRunner& runner() const { return session_->runner(); }

    /// Shows the elements of a class; null for none.
    void setClass(const skill::Element::Class* elementClass);
    [[nodiscard]] const skill::Element::Class* elementClass() const { return class_; }

    /// Shows only rows with this text in any cell.
    void setFilter(const QString& filter);

    [[nodiscard]] model::Element& elementAt(int row) const;
    /// The row of an element; below 0 if it has none.
    [[nodiscard]] int rowOf(const model::Element& element) const;
    [[nodiscard]] std::size_t unfilteredCount() const { return rows_.size(); }
    /// Whether the form of the elements has fields, which are the columns behind the fixed ones.
    [[nodiscard]] bool hasFields() const { return !fields_.empty(); }
    /// The column of the field with this key; below 0 if there is none.
    [[nodiscard]] int columnOf(std::string_view key) const;
    /// The key of the field that a column behind the fixed ones shows.
    [[nodiscard]] std::string_view keyOf(int column) const {
        return fields_[static_cast<std::size_t>(column - kFixedColumns)].key;
    }
    /// The control of a form of the row's element that the column shows; null if it shows none.
    [[nodiscard]] ui::Control* controlOf(const core::OpenForm& form,
                                         const QModelIndex& index) const;

    /// Gives the field that a control of the row's element stands for a value.
    void enter(const QModelIndex& index, const ui::Control& control, ui::ControlValue value);

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    void sort(int column, Qt::SortOrder order) override;

signals:
    void progressed(int percent);
    /// The rows stand as wished.
    void settled();

private:
    /// What names a column of the form, and what the user reads above it.
    struct FieldColumn {
        std::string key;
        QString label;
    };

    void takeRows();
    void readFields();
    void dropRows();
    void reorder();
    void refreshValues();
    [[nodiscard]] const std::vector<Cell>& cellsOf(model::Element& element) const;
    [[nodiscard]] const Cell* formCell(const QModelIndex& index) const;

    ProjectSession* session_;
    ClassIcons* icons_;
    TableSource* source_;
    TableOrder* order_;
    TableOrder::Wish wish_;
    const skill::Element::Class* class_ = nullptr;
    std::vector<model::Element*> rows_;
    std::vector<std::uint32_t> shown_; // positions in rows_
    std::vector<FieldColumn> fields_;
    mutable std::unordered_map<const model::Element*, std::vector<Cell>> cells_; // of seen rows
};

} // namespace corvane::workbench::gui
