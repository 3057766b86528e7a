#include "workbench/core/project/FieldRemarks.hpp"

#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>

namespace corvane::workbench::core {

namespace {

using Remark = ui::ControlFunction<std::u16string()>;

/// Keeps what a control remarks by.
class RemarkFinder final : public ui::ControlVisitor {
public:
    void visit(ui::TextField& control) override { found = &control.settings().remark; }
    void visit(ui::SpinBoxControl&) override {}
    void visit(ui::InfoField&) override {}
    void visit(ui::ChoiceList&) override {}
    void visit(ui::FlagChoice&) override {}
    void visit(ui::ReferenceChooser&) override {}
    void visit(ui::PushButton&) override {}

    const Remark* found = nullptr;
};

/// Null where the control has nothing to remark by.
const Remark* remarkOf(ui::Control& control) {
    RemarkFinder finder;
    control.accept(finder);
    return finder.found != nullptr && *finder.found ? finder.found : nullptr;
}

} // namespace

std::u16string remarkOn(ui::Control& control) {
    const auto* const remark = remarkOf(control);
    return remark == nullptr ? std::u16string() : (*remark)();
}

void FieldRemarks::visit(
    model::Element& element,
    function_ref<void(const ui::Control& control, const std::u16string& remark)> visit) {
    const auto [entry, isNew] = mayRemark_.try_emplace(&element.elementClass(), true);
    if (!entry->second)
        return;
    const OpenForm form(element);
    const auto controls = form.controls();
    if (isNew)
        entry->second = std::ranges::any_of(
            controls, [](ui::Control* control) { return remarkOf(*control) != nullptr; });
    for (auto* const control : controls)
        if (control->isVisible())
            if (const auto remark = remarkOn(*control); !remark.empty())
                visit(*control, remark);
}

std::vector<PropertyError> fieldRemarks(ElementList elements) {
    std::vector<PropertyError> found;
    FieldRemarks remarks;
    forEachElement(elements, [&](model::Element& element) {
        remarks.visit(element, [&](const ui::Control& control, const std::u16string& remark) {
            found.push_back({&element, control.texts().label, remark});
        });
    });
    return found;
}

} // namespace corvane::workbench::core
