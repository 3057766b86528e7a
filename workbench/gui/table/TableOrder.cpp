#include "workbench/gui/table/TableOrder.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/table/Cell.hpp"

#include <algorithm>
#include <tuple>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::uint32_t kStepRows = 32;

} // namespace

QString fixedCell(const model::Element& element, FixedColumn column) {
    if (column == FixedColumn::name)
        return toQt(element.name());
    const auto* const above = element.parentElement();
    return above == nullptr ? QStringLiteral("/") : toQt(std::string_view(above->path()));
}

TableOrder::TableOrder(ProjectSession& session, QObject* parent)
    : QObject(parent), session_(&session), slicer_(session.runner(), this) {
    connect(this, &TableOrder::sortEnded, this, &TableOrder::takeSorted, Qt::QueuedConnection);
}

TableOrder::~TableOrder() {
    if (sorter_.joinable())
        sorter_.join();
}

void TableOrder::start(const std::vector<model::Element*>& rows, Wish wish) {
    stop();
    rows_ = &rows;
    wish_ = std::move(wish);
    match_ = TextMatch(wish_.filter);
    entries_.clear();
    running_ = true;
    slicer_.start([this, row = std::uint32_t{0}]() mutable { return read(row); });
}

void TableOrder::stop() {
    ++generation_;
    slicer_.stop();
    running_ = false;
}

bool TableOrder::read(std::uint32_t& row) {
    const auto count = static_cast<std::uint32_t>(rows_->size());
    const auto end = std::min(count, row + kStepRows);
    const auto percentBefore = row * std::uint64_t{100} / std::max(count, 1u);
    core::FormSeries forms; // no longer than a step: the project may change before the next one
    for (; row != end; ++row)
        readRow(row, forms);
    const auto percent = row * std::uint64_t{100} / std::max(count, 1u);
    if (percent != percentBefore)
        emit progressed(static_cast<int>(percent));
    if (row != count)
        return false;
    sortRead();
    return true;
}

// A form is built only for what name and place do not say.
void TableOrder::readRow(std::uint32_t row, core::FormSeries& forms) {
    auto& element = *(*rows_)[row];
    std::vector<ui::Control*> controls;
    const auto needForm = [&] {
        if (controls.empty())
            controls = cellControls(forms.of(element));
    };
    if (!match_.isIn(element.name()) && !match_.isIn(fixedCell(element, FixedColumn::location))) {
        needForm();
        if (std::ranges::none_of(
                controls, [&](auto* control) { return match_.isIn(readCell(*control).text); }))
            return;
    }
    QString text;
    if (wish_.sortColumn >= kFixedColumns) {
        needForm();
        const auto index = static_cast<std::size_t>(wish_.sortColumn - kFixedColumns);
        if (index < controls.size())
            text = readCell(*controls[index]).text;
    } else if (wish_.sortColumn >= 0) {
        text = fixedCell(element, static_cast<FixedColumn>(wish_.sortColumn));
    }
    entries_.push_back({row, std::move(text)});
}

void TableOrder::sortRead() {
    auto entries = std::exchange(entries_, {});
    if (wish_.sortColumn < 0) {
        finish(entries);
        return;
    }
    // One sort after the other: each waits for the thread of the one before.
    sorter_ = std::thread([this, before = std::move(sorter_), generation = generation_,
                           direction = wish_.direction, entries = std::move(entries)]() mutable {
        if (before.joinable())
            before.join();
        sort(entries, direction);
        {
            const std::lock_guard lock(mutex_);
            sorted_ = {generation, std::move(entries)};
        }
        emit sortEnded(QPrivateSignal());
    });
}

// Rows with the same text keep their order.
void TableOrder::sort(std::vector<Entry>& entries, Qt::SortOrder direction) {
    std::ranges::sort(entries, [direction](const Entry& a, const Entry& b) {
        const auto& [first, second] =
            direction == Qt::AscendingOrder ? std::tie(a, b) : std::tie(b, a);
        if (comesBefore(first.text, second.text))
            return true;
        return a.row < b.row && !comesBefore(second.text, first.text);
    });
}

void TableOrder::takeSorted() {
    std::unique_lock lock(mutex_);
    const auto sorted = std::exchange(sorted_, std::nullopt);
    lock.unlock();
    if (sorted && sorted->generation == generation_)
        finish(sorted->entries);
}

void TableOrder::finish(const std::vector<Entry>& entries) {
    running_ = false;
    std::vector<std::uint32_t> order;
    order.reserve(entries.size());
    for (const auto& entry : entries)
        order.push_back(entry.row);
    emit ordered(order);
}

} // namespace corvane::workbench::gui
