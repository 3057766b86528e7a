#pragma once

#include "workbench/gui/session/ProjectSession.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <QAbstractTableModel>
#include <QTimer>

#include <unordered_set>
#include <vector>

namespace corvane::workbench::gui {

/// Every property error of the project, looked for between events after each change.
class ProblemsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// The most problems that are listed; all are counted.
    static constexpr std::size_t kMaxListed = 10'000;

    struct Problem {
        model::Element* element;
        QString path;
        std::string key; // of the field's control; empty where the form shows none
        QString field;   // its label
        QString message;
        friend bool operator==(const Problem&, const Problem&) = default;
    };

    ProblemsModel(ProjectSession& session, QObject* parent);

    [[nodiscard]] const Problem& at(int row) const {
        return problems_[static_cast<std::size_t>(row)];
    }
    /// How many there are, listed or not.
    [[nodiscard]] std::size_t total() const { return total_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

signals:
    /// The whole project has been looked through; something is wrong below each of `above`.
    void counted(std::size_t total, const std::unordered_set<const model::Element*>& above);

private:
    void drop();
    void restart();
    bool look(TreeWalk& walk);
    void note(model::Element& element);
    void noteAbove(const model::Element& element);
    void publish();

    ProjectSession* session_;
    Slicer slicer_;
    QTimer restart_;
    std::vector<Problem> problems_;
    std::size_t total_ = 0;
    std::vector<Problem> found_;
    std::size_t foundTotal_ = 0;
    std::unordered_set<const model::Element*> foundAbove_;
};

} // namespace corvane::workbench::gui
