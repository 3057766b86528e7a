#pragma once

#include "workbench/core/Project.hpp"
#include "workbench/core/ProjectImport.hpp"

#include <corvane/workbench/ui/Control.hpp>
#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// An edit was refused; the project is as it was. The text is translated, UTF-8, and says why.
class EditError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Learns of every change that an Editor makes to the tree, undo and redo included. Front ends keep
/// their views by it. Positions are those among the parent's children.
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

/// A value for the control with this label.
struct FieldValue {
    std::u16string label;
    ui::ControlValue value;
};

/// A reference that an edit has left without its element.
struct LostReference {
    model::Element* holder; // the element that refers
    std::string text;       // the path that it keeps
};

/// Edits a project, one step of history at a time. All edits of the front ends go through it: it
/// refuses what a form or a class would refuse, and it can take every step back.
///
/// Elements that a step took out of the tree live on in the history, so pointers to elements stay
/// valid as long as the editor does.
class Editor {
public:
    /// `project` must outlive the editor, and is changed through it only.
    explicit Editor(Project& project);
    Editor(const Editor&) = delete;
    Editor& operator=(const Editor&) = delete;
    ~Editor();

    [[nodiscard]] Project& project() const;

    /// One observer at a time; null for none.
    void setObserver(EditObserver* observer);

    /// Sets fields of one element through its form, all or none. Throws EditError, naming the label
    /// and the reason. A value that the field has already is no change; no change is no step.
    void setValues(model::Element& element, std::span<const FieldValue> values);

    /// Sets the same field of several elements, all or none, as one step; the elements may be of
    /// several classes as long as all have the field.
    void setValue(std::span<model::Element* const> elements, const FieldValue& value);

    /// Adds an element; the name is the class's own where `name` is empty, and made unique.
    model::Element& add(model::Element& parent, const LoadedClass& elementClass,
                        std::string_view name = {});

    /// Gives an element a name that none of its siblings has. Throws EditError for an empty name or
    /// one that is taken.
    void rename(model::Element& element, std::string_view name);

    /// Removes elements with all that is below them, and says which references elsewhere have lost
    /// their element by it.
    std::vector<LostReference> remove(std::span<model::Element* const> elements);

    /// Moves elements, in their order, in front of the child of `parent` at `position` (its number
    /// of children for the end). Throws EditError where the parent does not accept one of them, or
    /// stands below one.
    void move(std::span<model::Element* const> elements, model::Element& parent,
              std::size_t position);

    /// Whether `move` would accept the elements there.
    [[nodiscard]] bool canMove(std::span<model::Element* const> elements,
                               const model::Element& parent) const;

    /// Imports a document as importDocument does, as one step.
    ImportOutcome import(model::Element& target, std::string document);

    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    /// What the next step back or forth is, for menus: "Rename “speed”"; translated.
    [[nodiscard]] std::u16string undoText() const;
    [[nodiscard]] std::u16string redoText() const;
    void undo();
    void redo();

    /// Whether the project differs from what was last read or saved.
    [[nodiscard]] bool isModified() const;
    /// The project was saved in its present state.
    void markSaved();

private:
    class History;
    std::unique_ptr<History> history_;
};

} // namespace corvane::workbench::core
