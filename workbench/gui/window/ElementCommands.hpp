#pragma once

#include "workbench/gui/look/Actions.hpp"
#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/session/ElementPart.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <cstdint>

class QMenu;

namespace corvane::workbench::gui {

class TablePanel;
class TreePanel;

/// The commands on elements. They act on what the user sees selected in the part that has the
/// keyboard, or had it before a menu or the tool bar took it.
class ElementCommands : public QObject {
    Q_OBJECT

public:
    /// All must outlive the object, which belongs to `window`.
    ElementCommands(ProjectSession& session, ClassIcons& icons, const Actions& actions,
                    QWidget& window);

    /// The parts, which must outlive the object; in `others` nothing is selected that a command
    /// could act on.
    void setParts(TreePanel& tree, TablePanel& table, QWidget& others);

    [[nodiscard]] QMenu& addMenu() const { return *addMenu_; }

    void duplicate();
    void rename();
    void remove();

    enum class Direction : std::uint8_t { up, down };
    /// Moves the selected elements, if they are siblings, past the one next to them.
    void move(Direction direction);
    /// Remembers the selected elements, to be moved by `put`; until then nothing changes.
    void pickUp();
    /// Forgets what was picked up.
    void leave() { setPickedUp({}); }
    /// Moves what was picked up below the current element, or behind it where it does not accept
    /// them but the one above does.
    void put();

private:
    void follow(const QWidget* focus);
    void setPart(ElementPart* part);
    /// The part that commands act on; null for none.
    [[nodiscard]] ElementPart* part() const;
    [[nodiscard]] model::Element* current() const;
    [[nodiscard]] model::Element& parentOf(model::Element& element) const;
    void fillAddMenu();
    void offer(model::Element& parent);
    void addBelow(model::Element& parent, const core::LoadedClass& elementClass);
    void update();
    void setPickedUp(std::vector<model::Element*> elements);
    void dropLostPickedUp();
    [[nodiscard]] model::Element* newParentOfPickedUp() const;

    ProjectSession* session_;
    ClassIcons* icons_;
    const Actions* actions_;
    QMenu* addMenu_;
    TreePanel* tree_ = nullptr;
    TablePanel* table_ = nullptr;
    QWidget* others_ = nullptr;
    ElementPart* part_ = nullptr;
    std::vector<model::Element*> pickedUp_; // of the project, not of the history
};

} // namespace corvane::workbench::gui
