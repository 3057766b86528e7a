#pragma once

#include "workbench/gui/look/TextMatch.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

namespace corvane::workbench::gui {

/// Looks for the elements whose names or addresses contain a text, between events, and shows them
/// in the tree. What was found stays shown while addresses are edited.
class TreeFilter : public QObject {
    Q_OBJECT

public:
    /// The most matches that are shown; more than anyone reads, few enough to be shown at once.
    static constexpr std::size_t kMaxShown = 10'000;

    TreeFilter(ProjectSession& session, TreeModel& model, QObject* parent);

    /// Begins to look for a text; for the empty one the whole tree is shown.
    void setText(const QString& text);
    [[nodiscard]] const QString& text() const { return text_; }
    /// Whether the tree shows what the text is found in, as `found` has told.
    [[nodiscard]] bool isShown() const { return model_->isFiltered() && !slicer_.isRunning(); }
    /// The first match that is shown; null for none.
    [[nodiscard]] model::Element* first() const { return isShown() ? first_ : nullptr; }

signals:
    /// The tree shows the matches; `count` are all, of which the first `kMaxShown` are shown.
    void found(std::size_t count);
    void cleared();

private:
    void restart();
    bool look(TreeWalk& walk);
    [[nodiscard]] bool matches(const model::Element& element) const;
    void show(model::Element& match);
    void publish();

    ProjectSession* session_;
    TreeModel* model_;
    Slicer slicer_;
    QTimer restart_;
    QString text_;
    TextMatch match_{QString()};
    FilteredChildren found_;
    std::size_t count_ = 0;
    model::Element* first_ = nullptr;
};

} // namespace corvane::workbench::gui
