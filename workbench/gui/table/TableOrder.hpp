#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/look/TextMatch.hpp"
#include "workbench/gui/session/ProjectSession.hpp"
#include "workbench/gui/session/Slicer.hpp"

#include <cstdint>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace corvane::workbench::gui {

/// The columns in front of those of the form.
enum class FixedColumn { name, location, count };
inline constexpr int kFixedColumns = static_cast<int>(FixedColumn::count);

/// The text of a cell that needs no form: an element's name, or the path of the one above it.
[[nodiscard]] QString fixedCell(const model::Element& element, FixedColumn column);

/// Finds out which rows of the table are shown, and in which order. What it needs of the elements
/// it reads between events; the texts are then sorted on another thread, which touches nothing of
/// the model.
class TableOrder : public QObject {
    Q_OBJECT

public:
    struct Wish {
        QString filter;      // in any cell of the row; empty for all rows
        int sortColumn = -1; // none below 0
        Qt::SortOrder direction = Qt::AscendingOrder;
    };

    TableOrder(ProjectSession& session, QObject* parent);
    /// Waits for a thread that sorts.
    ~TableOrder() override;

    /// Begins anew; `rows` must stay alive and unchanged until `ordered` or `stop`.
    void start(const std::vector<model::Element*>& rows, Wish wish);
    void stop();
    [[nodiscard]] bool isRunning() const { return running_; }

signals:
    /// How much has been read, of a work that takes its time.
    void progressed(int percent);
    /// The shown rows, as positions in what `start` was given.
    void ordered(const std::vector<std::uint32_t>& order);

    /// From the thread that has sorted.
    void sortEnded(QPrivateSignal);

private:
    struct Entry {
        std::uint32_t row;
        QString text;
    };
    struct Sorted {
        unsigned generation;
        std::vector<Entry> entries;
    };

    bool read(std::uint32_t& row);
    void readRow(std::uint32_t row, core::FormSeries& forms);
    void sortRead();
    static void sort(std::vector<Entry>& entries, Qt::SortOrder direction);
    void takeSorted();
    void finish(const std::vector<Entry>& entries);

    ProjectSession* session_;
    Slicer slicer_;
    std::thread sorter_; // the latest one
    std::mutex mutex_;
    std::optional<Sorted> sorted_; // guarded by mutex_
    const std::vector<model::Element*>* rows_ = nullptr;
    Wish wish_;
    TextMatch match_{QString()};
    std::vector<Entry> entries_;
    unsigned generation_ = 0;
    bool running_ = false;
};

} // namespace corvane::workbench::gui
