#include "workbench/core/Editor.hpp"

#include "workbench/core/edit/AddStep.hpp"
#include "workbench/core/edit/EditText.hpp"
#include "workbench/core/edit/History.hpp"
#include "workbench/core/edit/ImportStep.hpp"
#include "workbench/core/edit/MoveStep.hpp"
#include "workbench/core/edit/RemoveStep.hpp"
#include "workbench/core/edit/RenameStep.hpp"
#include "workbench/core/edit/Selection.hpp"
#include "workbench/core/edit/SetValuesStep.hpp"

#include <corvane/utils/string/Utf.hpp>

#include <algorithm>
#include <array>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

void requireWellFormed(std::string_view name) {
    if (!utils::string::detail::isValidUtf8(name))
        refuseEdit("the name “{}” is not valid UTF-8", {utf8ToUtf16(name)});
}

void requireBelowRoot(const Workspace& workspace, std::span<Element* const> elements) {
    if (std::ranges::find(elements, &workspace.model().root()) != elements.end())
        refuseEdit("the project itself is no element");
}

bool standsAtOrBelow(const Element* element, const Element& other) {
    while (element != nullptr && element != &other)
        element = element->parentElement();
    return element != nullptr;
}

} // namespace

Editor::Editor(Project& project) : history_(std::make_unique<History>(project)) {}

Editor::~Editor() = default;

Project& Editor::project() const { return history_->workspace.project(); }

void Editor::setObserver(EditObserver* observer) { history_->workspace.setObserver(observer); }

void Editor::setValues(Element& element, std::span<const FieldValue> values) {
    const std::array elements{&element};
    requireBelowRoot(history_->workspace, elements);
    history_->push(SetValuesStep::make(history_->workspace, elements, values));
}

void Editor::setValue(std::span<Element* const> elements, const FieldValue& value) {
    requireBelowRoot(history_->workspace, elements);
    history_->push(SetValuesStep::make(history_->workspace, elements, {&value, 1}));
}

Element& Editor::add(Element& parent, const LoadedClass& elementClass, std::string_view name) {
    requireWellFormed(name);
    auto step = std::make_unique<AddStep>(history_->workspace, parent, elementClass, name);
    auto& element = step->element();
    history_->push(std::move(step));
    return element;
}

void Editor::rename(Element& element, std::string_view name) {
    auto& workspace = history_->workspace;
    requireBelowRoot(workspace, std::array{&element});
    if (name == element.name())
        return;
    if (name.empty())
        refuseEdit("a name must not be empty");
    requireWellFormed(name);
    const auto* const parent = element.parentElement();
    if ((parent == nullptr ? workspace.model().root() : *parent).isNameTaken(name))
        refuseEdit("there is another element “{}” beside it", {utf8ToUtf16(name)});
    auto step = std::make_unique<RenameStep>(element, name);
    step->redo(workspace);
    history_->push(std::move(step));
}

std::vector<LostReference> Editor::remove(std::span<Element* const> elements) {
    auto& workspace = history_->workspace;
    requireBelowRoot(workspace, elements);
    if (elements.empty())
        return {};
    auto step = std::make_unique<RemoveStep>(workspace, topmostOf(elements));
    auto losses = step->losses(workspace);
    step->redo(workspace);
    history_->push(std::move(step));
    return losses;
}

void Editor::move(std::span<Element* const> elements, Element& parent, std::size_t position) {
    auto& workspace = history_->workspace;
    if (elements.empty())
        return;
    if (!canMove(elements, parent))
        refuseEdit("“{}” does not accept what is moved there", {utf8ToUtf16(parent.name())});
    const auto count = parent.childElements().size();
    auto step = std::make_unique<MoveStep>(workspace, topmostOf(elements), parent,
                                           std::min(position, count));
    if (step->isNothing())
        return;
    step->redo(workspace);
    history_->push(std::move(step));
}

bool Editor::canMove(std::span<Element* const> elements, const Element& parent) const {
    const auto& root = project().model().root();
    return std::ranges::all_of(topmostOf(elements), [&](const Element* element) {
        return element != &root && !standsAtOrBelow(&parent, *element) &&
               project().accepts(parent, project().plugins().entryOf(element->elementClass()));
    });
}

ImportOutcome Editor::import(Element& target, std::string document) {
    StagedImport staged(project(), target, std::move(document));
    auto step = std::make_unique<ImportStep>(history_->workspace, target, staged);
    auto outcome = step->outcome();
    if (!step->isNothing())
        history_->push(std::move(step));
    return outcome;
}

bool Editor::canUndo() const { return history_->undoable() != nullptr; }

bool Editor::canRedo() const { return history_->redoable() != nullptr; }

std::u16string Editor::undoText() const {
    return canUndo() ? history_->undoable()->text() : std::u16string();
}

std::u16string Editor::redoText() const {
    return canRedo() ? history_->redoable()->text() : std::u16string();
}

void Editor::undo() { history_->undo(); }

void Editor::redo() { history_->redo(); }

bool Editor::isModified() const { return !history_->isSaved(); }

void Editor::markSaved() { history_->markSaved(); }

} // namespace corvane::workbench::core
