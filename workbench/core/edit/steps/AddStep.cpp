#include "workbench/core/edit/steps/AddStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"

namespace corvane::workbench::core {

namespace {

using model::Element;

/// As Project::add, with the observer told; what is thrown leaves no element behind.
Element& addTo(Workspace& workspace, Element& parent, const LoadedClass& entry,
               std::string_view name) {
    const auto position = parent.childElements().size();
    workspace.tell([&](auto& observer) { observer.aboutToInsert(parent, position, 1); });
    try {
        auto& element = workspace.project().add(parent, entry, name);
        workspace.tell([](auto& observer) { observer.inserted(); });
        return element;
    } catch (...) {
        const bool added = parent.childElements().size() > position;
        workspace.tell([](auto& observer) { observer.inserted(); });
        if (added)
            Placement(parent, {position}).takeOut(workspace);
        throw;
    }
}

} // namespace

AddStep::AddStep(Element& parent, const LoadedClass& elementClass, std::string_view name)
    : Step(editText("Add {}", {elementClass.elementClass->displayName()})),
      elementClass_(&elementClass),
      name_(name.empty() ? elementClass.elementClass->name() : name),
      placement_(parent, {parent.childElements().size()}) {}

bool AddStep::perform(Workspace& workspace) {
    element_ = &addTo(workspace, placement_.parent(), *elementClass_, name_);
    if (findings_.make(workspace))
        workspace.validateReferences();
    return true;
}

void AddStep::undo(Workspace& workspace) {
    const bool found = findings_.takeBack(workspace);
    const bool lost = placement_.takeOut(workspace);
    if (found || lost)
        workspace.validateReferences();
}

void AddStep::redo(Workspace& workspace) {
    const bool regained = placement_.putBack(workspace);
    const bool found = findings_.make(workspace);
    if (regained || found)
        workspace.validateReferences();
}

} // namespace corvane::workbench::core
