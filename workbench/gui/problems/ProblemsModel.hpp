#pragma once

#include "workbench/gui/problems/Problem.hpp"
#include "workbench/gui/problems/WarningLookup.hpp"
#include "workbench/gui/session/ProjectSession.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <QAbstractTableModel>
#include <QTimer>

#include <unordered_set>
#include <vector>

namespace corvane::workbench::gui {

/// Every property error of the project, looked for between events after each change, and behind
/// them what is suspicious, looked for when nothing has changed for a moment.
class ProblemsModel : public QAbstractTableModel {
    Q_OBJECT

public:
    ProblemsModel(ProjectSession& session, QObject* parent);

    [[nodiscard]] const Problem& at(int row) const;
    /// How many there are, listed or not.
    [[nodiscard]] std::size_t total(Severity severity) const {
        return severity == Severity::error ? total_ : warningTotal_;
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

signals:
    /// The whole project has been looked through; something is wrong below each of `above`.
    void counted(std::size_t total, const std::unordered_set<const model::Element*>& above);
    /// It has been looked through for what is suspicious, too.
    void warningsCounted();

private:
    void drop();
    void restart();
    bool look(TreeWalk& walk);
    void note(model::Element& element);
    void noteAbove(const model::Element& element);
    void publish();
    void lookForWarnings();
    bool lookForWarnings(WarningLookup& lookup);
    /// Replaces a part of the list, unless nothing has changed in it.
    void show(std::vector<Problem>& part, std::vector<Problem> found);

    ProjectSession* session_;
    Slicer slicer_;
    QTimer restart_;
    QTimer idle_;
    std::vector<Problem> errors_;
    std::vector<Problem> warnings_;
    std::size_t total_ = 0;
    std::size_t warningTotal_ = 0;
    std::vector<Problem> found_;
    std::size_t foundTotal_ = 0;
    std::unordered_set<const model::Element*> foundAbove_;
};

} // namespace corvane::workbench::gui
