#include "workbench/core/edit/steps/RenameStep.hpp"

#include "workbench/core/edit/workspace/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>
#include <corvane/workbench/host/Tree.hpp>

namespace corvane::workbench::core {

RenameStep::RenameStep(model::Element& element, std::string_view name)
    : Step(editText("Rename “{}”", {utils::string::detail::utf8ToUtf16(element.name())})),
      element_(&element),
      before_(element.name()),
      after_(name) {}

bool RenameStep::perform(Workspace& workspace) {
    redo(workspace);
    return true;
}

void RenameStep::undo(Workspace& workspace) {
    const bool found = findings_.takeBack(workspace);
    host::rename(*element_, before_);
    workspace.tell([&](auto& observer) { observer.renamed(*element_); });
    if (found)
        workspace.validateReferences();
}

void RenameStep::redo(Workspace& workspace) {
    host::rename(*element_, after_);
    workspace.tell([&](auto& observer) { observer.renamed(*element_); });
    if (findings_.make(workspace))
        workspace.validateReferences();
}

} // namespace corvane::workbench::core
