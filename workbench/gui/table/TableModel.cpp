#include "workbench/gui/table/TableModel.hpp"

#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"

#include <QGuiApplication>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TableModel";
constexpr std::size_t kMaxKeptRows = 4000; // some hundred are seen at once

} // namespace

TableModel::TableModel(ProjectSession& session, ClassIcons& icons, QObject* parent)
    : QAbstractTableModel(parent),
      session_(&session),
      icons_(&icons),
      source_(new TableSource(session, this)),
      order_(new TableOrder(session, this)) {
    connect(source_, &TableSource::dropped, this, &TableModel::dropRows);
    connect(session_, &ProjectSession::valuesUpdated, this, &TableModel::refreshValues);
    connect(session_, &ProjectSession::elementRenamed, this, &TableModel::refreshValues);
    connect(order_, &TableOrder::progressed, this, &TableModel::progressed);
    connect(order_, &TableOrder::ordered, this, [this](const std::vector<std::uint32_t>& order) {
        beginResetModel();
        shown_ = order;
        endResetModel();
        emit settled();
    });
}

void TableModel::setClass(const skill::Element::Class* elementClass) {
    if (class_ != elementClass)
        wish_.sortColumn = -1;
    class_ = elementClass;
    takeRows();
}

void TableModel::setFilter(const QString& filter) {
    wish_.filter = filter;
    reorder();
}

void TableModel::sort(int column, Qt::SortOrder order) {
    wish_.sortColumn = column;
    wish_.direction = order;
    reorder();
}

void TableModel::takeRows() {
    order_->stop();
    beginResetModel();
    cells_.clear();
    fields_.clear();
    rows_.clear();
    const auto group =
        std::ranges::find(source_->groups(), class_, &TableSource::Group::elementClass);
    if (group != source_->groups().end())
        rows_ = group->elements;
    readFields();
    shown_.clear();
    shown_.reserve(rows_.size());
    for (std::uint32_t row = 0; row != rows_.size(); ++row)
        shown_.push_back(row);
    endResetModel();
    reorder();
}

void TableModel::readFields() {
    if (rows_.empty())
        return;
    const core::OpenForm form(*rows_.front());
    for (const auto* const control : cellControls(form))
        fields_.push_back({std::string(control->key()), toQt(control->texts().label)});
}

void TableModel::dropRows() {
    order_->stop();
    beginResetModel();
    rows_.clear();
    shown_.clear();
    cells_.clear();
    endResetModel();
}

void TableModel::reorder() {
    if (session_->isBusy() || rows_.empty())
        return;
    if (wish_.sortColumn < 0 && wish_.filter.isEmpty() && shown_.size() == rows_.size() &&
        std::ranges::is_sorted(shown_)) {
        order_->stop();
        emit settled();
        return;
    }
    order_->start(rows_, wish_);
}

void TableModel::refreshValues() {
    cells_.clear();
    if (shown_.empty())
        return;
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

model::Element& TableModel::elementAt(int row) const {
    return *rows_[shown_[static_cast<std::size_t>(row)]];
}

int TableModel::rowOf(const model::Element& element) const {
    const auto found =
        std::ranges::find_if(shown_, [&](std::uint32_t row) { return rows_[row] == &element; });
    return found == shown_.end() ? -1 : static_cast<int>(found - shown_.begin());
}

const std::vector<Cell>& TableModel::cellsOf(model::Element& element) const {
    if (const auto found = cells_.find(&element); found != cells_.end())
        return found->second;
    if (cells_.size() >= kMaxKeptRows)
        cells_.clear();
    const core::OpenForm form(element);
    std::vector<Cell> cells;
    for (auto* const control : cellControls(form))
        cells.push_back(readCell(*control));
    return cells_.emplace(&element, std::move(cells)).first->second;
}

const Cell* TableModel::formCell(const QModelIndex& index) const {
    if (index.column() < kFixedColumns || session_->isBusy())
        return nullptr;
    const auto& cells = cellsOf(elementAt(index.row()));
    const auto column = static_cast<std::size_t>(index.column() - kFixedColumns);
    return column < cells.size() ? &cells[column] : nullptr;
}

ui::Control* TableModel::controlOf(const core::OpenForm& form, const QModelIndex& index) const {
    const auto column = static_cast<std::size_t>(index.column() - kFixedColumns);
    return index.column() < kFixedColumns || column >= fields_.size()
               ? nullptr
               : form.find(fields_[column].key);
}

int TableModel::columnOf(std::string_view key) const {
    const auto found = std::ranges::find(fields_, key, &FieldColumn::key);
    return found == fields_.end() ? -1 : kFixedColumns + static_cast<int>(found - fields_.begin());
}

void TableModel::enter(const QModelIndex& index, const ui::Control& control,
                       ui::ControlValue value) {
    session_->setField(elementAt(index.row()), control, std::move(value));
}

int TableModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kFixedColumns + static_cast<int>(fields_.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || session_->isBusy())
        return {};
    auto& element = elementAt(index.row());
    if (index.column() < kFixedColumns) {
        if (role == Qt::DisplayRole || role == Qt::EditRole)
            return fixedCell(element, static_cast<FixedColumn>(index.column()));
        if (role == Qt::DecorationRole && index.column() == 0)
            return icons_->of(element.elementClass());
        return {};
    }
    const auto* const cell = formCell(index);
    if (cell == nullptr)
        return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return cell->text;
    case Qt::ToolTipRole:
        return cell->error.isEmpty() ? QVariant() : QVariant(withoutFormat(cell->error));
    case Qt::AccessibleDescriptionRole:
        return cell->error.isEmpty() ? QVariant() : QVariant(cell->error);
    case Qt::DecorationRole:
        return cell->error.isEmpty() ? QVariant() : QVariant(icon("error"));
    case Qt::ForegroundRole:
        return cell->error.isEmpty() ? QVariant() : QGuiApplication::palette().color(kErrorRole);
    default:
        return {};
    }
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || index.column() != 0)
        return false;
    auto& element = elementAt(index.row());
    if (value.toString() != toQt(element.name()))
        session_->rename(element, value.toString());
    return true;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    if (section == static_cast<int>(FixedColumn::name))
        return translated(kContext, "Name");
    if (section == static_cast<int>(FixedColumn::location))
        return translated(kContext, "Location");
    const auto column = static_cast<std::size_t>(section - kFixedColumns);
    return column < fields_.size() ? fields_[column].label : QString();
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
    auto flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.column() == 0)
        return flags | Qt::ItemIsEditable;
    const auto* const cell = formCell(index);
    return cell != nullptr && cell->editable ? flags | Qt::ItemIsEditable : flags;
}

} // namespace corvane::workbench::gui
