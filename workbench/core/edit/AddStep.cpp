#include "workbench/core/edit/AddStep.hpp"

#include "workbench/core/edit/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>

namespace corvane::workbench::core {

namespace {

using model::Element;
using utils::string::detail::utf8ToUtf16;

void requirePlace(const Workspace& workspace, const Element& parent, const LoadedClass& entry) {
    const auto className = utf8ToUtf16(entry.elementClass->name());
    if (!workspace.project().accepts(parent, entry)) {
        if (&parent == &workspace.model().root())
            refuseEdit("an element of the class “{}” cannot stand at the top of a project",
                       {className});
        refuseEdit("an element of the class “{}” cannot stand below “{}”",
                   {className, utf8ToUtf16(parent.path())});
    }
    if (parent.depth() >= Element::kMaxDepth)
        refuseEdit("elements are nested too deeply");
}

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

AddStep::AddStep(Workspace& workspace, Element& parent, const LoadedClass& elementClass,
                 std::string_view name)
    : Step(editText("Add {}", {elementClass.elementClass->displayName()})),
      placement_(parent, {parent.childElements().size()}) {
    requirePlace(workspace, parent, elementClass);
    // NOLINTNEXTLINE(cppcoreguidelines-prefer-member-initializer): the place is checked first
    element_ = &addTo(workspace, parent, elementClass,
                      name.empty() ? elementClass.elementClass->name() : name);
    if (findings_.make(workspace))
        workspace.validateReferences();
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
