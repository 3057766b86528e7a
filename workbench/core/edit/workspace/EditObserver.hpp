#pragma once

#include <corvane/workbench/model/Element.hpp>

#include <cstddef>

namespace corvane::workbench::core {

/// Learns of every change that an Editor makes to the tree, undo and redo included. Front ends keep
/// their views by it. Positions are those among the parent's children, counted from 0.
///
/// What is "about to" happen has happened at the next call, which is its other half: nothing is
/// told between the two. The project can be read in every call, and changed in none.
class EditObserver {
public:
    virtual ~EditObserver() = default;

    virtual void aboutToInsert(model::Element& parent, std::size_t position, std::size_t count) = 0;
    virtual void inserted() = 0;
    virtual void aboutToRemove(model::Element& parent, std::size_t position, std::size_t count) = 0;
    virtual void removed() = 0;
    virtual void renamed(model::Element& element) = 0;

    /// Everything at and below `element` (the project's root, perhaps) is about to change, as by an
    /// import: forms of elements there must be closed, since their skill elements are replaced.
    /// Those of elements that are removed and inserted again, by a move, must be, too. A parent of
    /// which very many scattered children come or go is also told of so.
    virtual void aboutToReset(model::Element& element) = 0;
    virtual void reset(model::Element& element) = 0;

    /// Fields of the element have changed through an edit, and with them perhaps what the elements
    /// below derive from it.
    virtual void valuesChanged(model::Element& element) = 0;

    /// What can be undone or redone, or whether the project is modified, has changed.
    virtual void historyChanged() = 0;

protected:
    EditObserver() = default;
    EditObserver(const EditObserver&) = default;
    EditObserver& operator=(const EditObserver&) = default;
};

} // namespace corvane::workbench::core
