#pragma once

#include "workbench/gui/session/ElementPart.hpp"
#include "workbench/gui/tree/TreeFilter.hpp"
#include "workbench/gui/tree/TreeMemory.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

#include <QTreeView>
#include <QWidget>

class QAction;
class QLabel;

namespace corvane::workbench::gui {

class FilterLine;

/// The project tree with its filter.
class TreePanel : public QWidget, public ElementPart {
    Q_OBJECT

public:
    TreePanel(ProjectSession& session, ClassIcons& icons, QWidget* parent);

    /// The element that the user looks at; null for none.
    [[nodiscard]] model::Element* current() const override;

    /// The selected elements, without those that stand below another one of them.
    [[nodiscard]] std::vector<model::Element*> selected() const override;
    [[nodiscard]] bool hasSelection() const override;
    void renameCurrent() override;

    /// What the menu at an element of the tree offers; `removeKey` is what the key for removing
    /// does there, which in a text belongs to the text.
    void offer(const QList<QAction*>& actions, QAction& removeKey);

    /// Makes an element the current one and scrolls to it; a filter that hides it is lifted.
    void select(model::Element& element);
    /// Selects several elements, the first of which becomes the current one.
    void select(const std::vector<model::Element*>& elements);

    /// Shows elements as about to leave their places.
    void showPickedUp(const std::vector<model::Element*>& elements);

    /// Shows that something below these elements is wrong, where they are collapsed.
    void setTroubled(std::unordered_set<const model::Element*> elements);

    /// Whether the elements' data types and addresses stand beside their names.
    void showSummaries(bool shown);

    void expandAll();
    void collapseAll();

    void focusFilter();
    void focusTree();

signals:
    /// The user looks at another element, or at none.
    void currentChanged(model::Element* element);
    void selectionChanged();

private:
    void buildLayout();
    void connectFilter();
    void connectToSession();
    void show(const TreeMemory::Selection& selection);
    void restoreState();
    void showFound(std::size_t count);
    void leaveFilter();

    ProjectSession* session_;
    TreeModel* model_;
    TreeFilter* filter_;
    QTreeView* view_;
    TreeMemory* memory_;
    FilterLine* filterLine_;
    QLabel* filterResult_;
    model::Element* kept_ = nullptr; // the current one, for after a reset or a filter
    bool firstMatchWanted_ = false;  // as soon as it is found
    bool isNewProject_ = true;
};

} // namespace corvane::workbench::gui
