#include "workbench/core/edit/RenameStep.hpp"

#include "workbench/core/edit/EditText.hpp"

#include <corvane/utils/string/Utf.hpp>

namespace corvane::workbench::core {

RenameStep::RenameStep(model::Element& element, std::string_view name)
    : Step(editText("Rename “{}”", {utils::string::detail::utf8ToUtf16(element.name())})),
      element_(&element),
      before_(element.name()),
      after_(name) {}

void RenameStep::undo(Workspace& workspace) {
    const bool found = findings_.takeBack(workspace);
    element_->rename(before_);
    workspace.tell([&](auto& observer) { observer.renamed(*element_); });
    if (found)
        workspace.validateReferences();
}

void RenameStep::redo(Workspace& workspace) {
    element_->rename(after_);
    workspace.tell([&](auto& observer) { observer.renamed(*element_); });
    if (findings_.make(workspace))
        workspace.validateReferences();
}

} // namespace corvane::workbench::core
