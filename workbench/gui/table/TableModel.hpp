#pragma once

#include "workbench/gui/Icons.hpp"
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

    /// Shows the elements of a class; null for none.
    void setClass(const skill::Element::Class* elementClass);
    [[nodiscard]] const skill::Element::Class* elementClass() const { return class_; }

    /// Shows only rows with this text in any cell.
    void setFilter(const QString& filter);

    [[nodiscard]] model::Element& elementAt(int row) const;
    /// The row of an element; below 0 if it has none.
    [[nodiscard]] int rowOf(const model::Element& element) const;
    [[nodiscard]] std::size_t unfilteredCount() const { return rows_.size(); }
    /// The labels of the form, column by column behind the fixed ones.
    [[nodiscard]] const std::vector<std::u16string>& labels() const { return labels_; }

    /// Gives a field of a row's element a value.
    void enter(const QModelIndex& index, const ui::ControlValue& value);

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
    void takeRows();
    void readLabels();
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
    std::vector<std::u16string> labels_;
    mutable std::unordered_map<const model::Element*, std::vector<Cell>> cells_; // of seen rows
};

} // namespace corvane::workbench::gui
