#pragma once

#include "workbench/gui/tree/TreeModel.hpp"

#include <QTreeView>

#include <optional>
#include <unordered_set>
#include <vector>

namespace corvane::workbench::gui {

/// Remembers what of the tree is expanded, also of elements that are taken out and may come back,
/// and what was selected before and after each step of the history.
class TreeMemory : public QObject {
    Q_OBJECT

public:
    struct Selection {
        std::vector<model::Element*> elements;
        model::Element* current = nullptr;
    };

    /// What has to be selected now is told by `wanted`.
    TreeMemory(ProjectSession& session, TreeModel& model, QTreeView& view);

    /// What is selected in the view.
    [[nodiscard]] Selection selection() const;

    /// Expands what was expanded last, everywhere.
    void restoreExpanded();

    void expandAll();
    void collapseAll();

    /// Another project has no part in what was remembered; what it shows at its top is expanded
    /// where it is the only one.
    void forget();
    void expandLater(const model::Element& element) { expanded_.insert(&element); }

signals:
    /// A step is undone, redone, or has removed what was selected: this takes its place. The
    /// elements stand in the project.
    void wanted(const corvane::workbench::gui::TreeMemory::Selection& selection);

private:
    /// What was selected on either side of a step that changed the tree.
    struct Sides {
        Selection before;
        Selection after;
    };
    /// Where something stood.
    struct Place {
        model::Element* parent = nullptr;
        std::size_t position = 0;
    };

    void connectToSession();
    void note(const QModelIndex& index, bool expanded);
    void restoreBelow(const model::Element& parent);
    void beginStep(ProjectSession::Way way, bool ofTree);
    void endStep(ProjectSession::Way way, bool good);
    void takeNeighbour();
    [[nodiscard]] Place placeOf(model::Element& element) const;

    ProjectSession* session_;
    TreeModel* model_;
    QTreeView* view_;
    /// Only compared: some may be gone for ever.
    std::unordered_set<const model::Element*> expanded_;
    std::vector<std::optional<Sides>> steps_; // of the history; empty for those of values
    std::size_t step_ = 0;                    // that is being taken
    Selection before_;
    Place place_; // of what was the current element before
};

} // namespace corvane::workbench::gui
