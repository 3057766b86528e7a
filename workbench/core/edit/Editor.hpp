#pragma once

#include "workbench/core/edit/workspace/EditObserver.hpp"
#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/edit/workspace/Fields.hpp"
#include "workbench/core/edit/workspace/LostReferences.hpp"
#include "workbench/core/edit/workspace/Workspace.hpp"
#include "workbench/core/import/ImportPreview.hpp"
#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/project/Project.hpp"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// What an import did, with the numbers of elements that it changed and what is to be said of it.
struct ImportResult : ImportOutcome {
    ImportCounts counts;
    std::vector<MergeWarning> warnings;
};

/// A value that a user gives to an element of an import before it comes in.
struct ImportCorrection {
    std::size_t position = 0; ///< of the element at the top of the document, from 0
    FieldValue field;
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

    /// Told by edits of many values how many of how many elements are done, so that they can be
    /// shown and stopped: after false, the edit takes back what it has done and throws EditStopped.
    /// Undo and redo cannot be stopped.
    using Progress = Workspace::Progress;
    void setProgress(Progress progress);

    /// Makes all edits that `edits` makes with this editor, which are no undo and redo, one step of
    /// history: all of them or, where one is refused and `edits` lets that through, none. `text` is
    /// what the step does, translated; where it is empty, that of the first edit serves. Single
    /// edits tell no progress meanwhile.
    void together(std::u16string text, function_ref<void()> edits);

    /// Sets fields of one element through its form, all or none. Throws EditError, naming the label
    /// and the reason. A value that the field has already is no change; no change is no step.
    void setValues(model::Element& element, std::span<const FieldValue> values);

    /// Sets the same field of several elements, all or none, as one step; the elements may be of
    /// several classes as long as all have the field.
    void setValue(std::span<model::Element* const> elements, const FieldValue& value);

    /// Adds an element; the name is the class's own where `name` is empty, and made unique. Throws
    /// EditError for a place that does not accept the class, and for a name that is not valid UTF-8
    /// or has control characters.
    model::Element& add(model::Element& parent, const LoadedClass& elementClass,
                        std::string_view name = {});

    /// Copies elements, with all that is below them, each behind its original and under a name made
    /// unique from its own. References among what is copied lead to the copies. Returns these.
    std::vector<model::Element*> duplicate(std::span<model::Element* const> elements);

    /// Gives an element a name that none of its siblings has. Throws EditError for an empty name,
    /// one that is taken, is not valid UTF-8 or has control characters.
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

    /// Imports a document as importDocument does, as one step; one that changes nothing is none.
    /// The corrections are made first, in their order; throws EditError where one is refused.
    ImportResult import(model::Element& target, std::string document,
                        const ImportOptions& options = {},
                        std::span<const ImportCorrection> corrections = {});

    /// What `import` would do with the same. The project is as it was, and so is the history; the
    /// observer learns of a reset. It may be stopped, as edits of many values may.
    [[nodiscard]] ImportPreview previewImport(model::Element& target, std::string document,
                                              const ImportOptions& options = {},
                                              std::span<const ImportCorrection> corrections = {});

    [[nodiscard]] bool canUndo() const;
    [[nodiscard]] bool canRedo() const;
    /// How many steps have been made and not been undone.
    [[nodiscard]] std::size_t stepsDone() const;
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
    void setAll(std::span<model::Element* const> elements, std::span<const FieldValue> values);

    class History;
    std::unique_ptr<History> history_;
};

} // namespace corvane::workbench::core
