#pragma once

#include "workbench/gui/look/Actions.hpp"
#include "workbench/gui/tree/TreeFilter.hpp"
#include "workbench/gui/tree/TreeModel.hpp"

#include <QTreeView>
#include <QWidget>

class QLabel;
class QMenu;

namespace corvane::workbench::gui {

class FilterLine;

/// The project tree with its filter, and the commands on what is selected in it.
class TreePanel : public QWidget {
    Q_OBJECT

public:
    TreePanel(ProjectSession& session, ClassIcons& icons, const Actions& actions, QWidget* parent);

    /// The element that the user looks at; null for none.
    [[nodiscard]] model::Element* current() const;

    /// The selected elements, without those that stand below another one of them.
    [[nodiscard]] std::vector<model::Element*> selected() const;

    /// Makes an element the current one and scrolls to it; a filter that hides it is lifted.
    void select(model::Element& element);
    /// Selects several elements, the first of which becomes the current one.
    void select(const std::vector<model::Element*>& elements);

    [[nodiscard]] QMenu& addMenu() const { return *addMenu_; }
    void renameCurrent();
    void removeSelected();

    enum class Direction : std::uint8_t { up, down };
    /// Moves the selected elements, if they are siblings, past the one next to them.
    void moveSelected(Direction direction);
    /// Remembers the selected elements, to be moved by `putPickedUp`; until then nothing changes.
    void pickUpSelected();
    /// Moves what was picked up below the current element, or behind it where it does not accept
    /// them but the one above does.
    void putPickedUp();

    void focusFilter();
    void focusTree();

signals:
    /// The user looks at another element, or at none.
    void currentChanged(model::Element* element);

private:
    void buildLayout();
    void connectFilter();
    void fillAddMenu();
    void offer(model::Element& parent);
    void addBelow(model::Element& parent, const core::LoadedClass& elementClass);
    void updateActions();
    void setPickedUp(std::vector<model::Element*> elements);
    void dropLostPickedUp();
    [[nodiscard]] model::Element* newParentOfPickedUp() const;
    void keepState();
    void restoreState();
    void keepExpanded(const QModelIndex& parent);
    void restoreExpanded();

    ProjectSession* session_;
    ClassIcons* icons_;
    const Actions* actions_;
    TreeModel* model_;
    TreeFilter* filter_;
    QTreeView* view_;
    FilterLine* filterLine_;
    QLabel* filterResult_;
    QMenu* addMenu_;
    std::vector<model::Element*> expanded_; // for after a reset or a filter
    model::Element* kept_ = nullptr;        // the current one, for after a reset or a filter
    std::vector<model::Element*> pickedUp_; // of the project, not of the history
    bool isNewProject_ = true;
};

} // namespace corvane::workbench::gui
