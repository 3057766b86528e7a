#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/core/project/PropertyErrors.hpp"

#include <corvane/workbench/function_ref.hpp>

#include <map>
#include <string>
#include <vector>

namespace corvane::workbench::core {

/// What a user should know of the value of a control although it is valid, translated; empty for
/// nothing.
[[nodiscard]] std::u16string remarkOn(ui::Control& control);

/// Asks elements, one after the other, what is to be remarked on the fields of their forms. Of a
/// class whose forms never remark anything, one form is looked at and no more. It keeps no form.
class FieldRemarks {
public:
    /// Visits the remarks on an element, in form order. What `visit` is given is good during the
    /// call.
    void visit(model::Element& element,
               function_ref<void(const ui::Control& control, const std::u16string& remark)> visit);

private:
    std::map<const skill::Element::Class*, bool> mayRemark_;
};

/// Every remark on the elements and on those below them, in their order.
[[nodiscard]] std::vector<PropertyError> fieldRemarks(ElementList elements);

} // namespace corvane::workbench::core
