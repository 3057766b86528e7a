#pragma once

#include "workbench/gui/session/ProjectSession.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/session/TreeWalk.hpp"

#include <QTimer>

#include <vector>

namespace corvane::workbench::gui {

/// Collects the elements below one, class by class, between events, and anew after each change of
/// the tree.
class TableSource : public QObject {
    Q_OBJECT

public:
    /// The elements of a class, in the order of the tree.
    struct Group {
        const skill::Element::Class* elementClass;
        std::vector<model::Element*> elements;
    };

    TableSource(ProjectSession& session, QObject* parent);

    /// What is below `scope` is wanted from now on; null for nothing.
    void setScope(model::Element* scope);

    /// Without a use nothing is collected.
    void setActive(bool active);

    /// In the order in which the classes are met.
    [[nodiscard]] const std::vector<Group>& groups() const { return groups_; }

signals:
    /// Some of the elements may not be looked at any more.
    void dropped();
    void collected();

private:
    void drop();
    void restart();
    bool collect(TreeWalk& walk);

    ProjectSession* session_;
    Slicer slicer_;
    QTimer restart_;
    model::Element* scope_ = nullptr;
    std::vector<Group> groups_;
    std::vector<Group> next_;
    bool active_ = false;
    bool stale_ = true;
};

} // namespace corvane::workbench::gui
