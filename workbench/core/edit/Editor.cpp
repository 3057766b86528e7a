#include "workbench/core/edit/Editor.hpp"

#include "workbench/core/edit/History.hpp"
#include "workbench/core/edit/steps/AddStep.hpp"
#include "workbench/core/edit/steps/DuplicateStep.hpp"
#include "workbench/core/edit/steps/ImportStep.hpp"
#include "workbench/core/edit/steps/MoveStep.hpp"
#include "workbench/core/edit/steps/RemoveStep.hpp"
#include "workbench/core/edit/steps/RenameStep.hpp"
#include "workbench/core/edit/steps/SetValuesStep.hpp"
#include "workbench/core/edit/workspace/EditText.hpp"
#include "workbench/core/edit/workspace/Selection.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <array>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

void requireWellFormed(std::string_view name) {
    if (!utils::string::detail::isValidUtf8(name))
        refuseEdit("the name “{}” is not valid UTF-8", {utf8ToUtf16(name)});
    if (const auto oneLine = ui::requireOneLine(utf8ToUtf16(name), editText("the name")); !oneLine)
        throw EditError(utils::string::detail::utf16ToUtf8(oneLine.error()));
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

void requirePlace(const Element& parent, const LoadedClass& entry) {
    const auto className = utf8ToUtf16(entry.elementClass->name());
    if (!entry.mayStandBelow(parent)) {
        if (parent.isRoot())
            refuseEdit("an element of the class “{}” cannot stand at the top of a project",
                       {className});
        refuseEdit("an element of the class “{}” cannot stand below “{}”",
                   {className, utf8ToUtf16(parent.path())});
    }
    if (parent.depth() >= Element::kMaxDepth)
        refuseEdit("elements are nested too deeply");
}

void correct(const StagedImport& staged, std::span<const ImportCorrection> corrections) {
    for (const auto& [position, field] : corrections) {
        if (position >= staged.elements().size())
            refuseEdit("the document has no such element");
        const OpenForm form(*staged.elements()[position]);
        if (const auto set = fieldWithKey(form, field.key).setValue(field.value); !set)
            throw EditError(utils::string::detail::utf16ToUtf8(set.error()));
    }
}

} // namespace

Editor::Editor(Project& project) : history_(std::make_unique<History>(project)) {}

Editor::~Editor() = default;

Project& Editor::project() const { return history_->workspace.project(); }

void Editor::setObserver(EditObserver* observer) { history_->workspace.setObserver(observer); }

void Editor::setProgress(Progress progress) {
    history_->workspace.setProgress(std::move(progress));
}

void Editor::together(std::u16string text, function_ref<void()> edits) {
    history_->performTogether(std::move(text), edits);
}

void Editor::setValues(Element& element, std::span<const FieldValue> values) {
    setAll(std::array{&element}, values);
}

void Editor::setValue(std::span<Element* const> elements, const FieldValue& value) {
    setAll(elements, {&value, 1});
}

void Editor::setAll(std::span<Element* const> elements, std::span<const FieldValue> values) {
    requireBelowRoot(history_->workspace, elements);
    if (!elements.empty() && !values.empty())
        history_->perform(std::make_shared<SetValuesStep>(elements, values));
}

Element& Editor::add(Element& parent, const LoadedClass& elementClass, std::string_view name) {
    requireWellFormed(name);
    requirePlace(parent, elementClass);
    const auto step = std::make_shared<AddStep>(parent, elementClass, name);
    history_->perform(step);
    return step->element();
}

std::vector<Element*> Editor::duplicate(std::span<Element* const> elements) {
    requireBelowRoot(history_->workspace, elements);
    if (elements.empty())
        return {};
    const auto step = std::make_shared<DuplicateStep>(topmostOf(elements));
    history_->perform(step);
    return step->copies();
}

void Editor::rename(Element& element, std::string_view name) {
    requireBelowRoot(history_->workspace, std::array{&element});
    if (name == element.name())
        return;
    if (name.empty())
        refuseEdit("a name must not be empty");
    requireWellFormed(name);
    if (project().model().parentOf(element).isNameTaken(name))
        refuseEdit("there is another element “{}” beside it", {utf8ToUtf16(name)});
    history_->perform(std::make_shared<RenameStep>(element, name));
}

std::vector<LostReference> Editor::remove(std::span<Element* const> elements) {
    requireBelowRoot(history_->workspace, elements);
    if (elements.empty())
        return {};
    auto& model = project().model();
    const auto step = std::make_shared<RemoveStep>(topmostOf(elements), model);
    auto losses = step->losses(model);
    history_->perform(step);
    return losses;
}

void Editor::move(std::span<Element* const> elements, Element& parent, std::size_t position) {
    if (elements.empty())
        return;
    if (!canMove(elements, parent))
        refuseEdit("“{}” does not accept what is moved there", {utf8ToUtf16(parent.name())});
    const auto end = parent.childElements().size();
    history_->perform(std::make_shared<MoveStep>(topmostOf(elements), project().model(), parent,
                                                 std::min(position, end)));
}

bool Editor::canMove(std::span<Element* const> elements, const Element& parent) const {
    const auto& root = project().model().root();
    return std::ranges::all_of(topmostOf(elements), [&](const Element* element) {
        return element != &root && !standsAtOrBelow(&parent, *element) &&
               project().plugins().entryOf(element->elementClass()).mayStandBelow(parent);
    });
}

ImportResult Editor::import(Element& target, std::string document, const ImportOptions& options,
                            std::span<const ImportCorrection> corrections) {
    StagedImport staged(project(), target, std::move(document));
    correct(staged, corrections);
    const auto step = std::make_shared<ImportStep>(target, staged, options);
    history_->perform(step);
    return {step->outcome(), step->counts(), step->warnings()};
}

ImportPreview Editor::previewImport(Element& target, std::string document,
                                    const ImportOptions& options,
                                    std::span<const ImportCorrection> corrections) {
    auto& workspace = history_->workspace;
    workspace.tellProgress(0, kPreviewParts);
    StagedImport staged(project(), target, std::move(document));
    correct(staged, corrections);
    workspace.tellProgress(kPreviewRead, kPreviewParts);
    return ImportStep(target, staged, options).preview(workspace);
}

bool Editor::canUndo() const { return history_->undoable() != nullptr; }

bool Editor::canRedo() const { return history_->redoable() != nullptr; }

std::size_t Editor::stepsDone() const { return history_->stepsDone(); }

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
