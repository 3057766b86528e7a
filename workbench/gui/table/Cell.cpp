#include "workbench/gui/table/Cell.hpp"

#include "workbench/gui/look/Text.hpp"

#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

class Reader final : public ui::ControlVisitor {
public:
    void visit(ui::TextField& control) override { takeText(control, true); }
    void visit(ui::InfoField& control) override { takeText(control, false); }
    void visit(ui::ReferenceChooser& control) override { takeText(control, true); }
    void visit(ui::SpinBoxControl& control) override {
        cell.text = QString::number(qulonglong{std::get<std::uint64_t>(control.value())});
        cell.editable = true;
    }
    void visit(ui::ChoiceList& control) override {
        const auto value = std::get<std::u16string>(control.value());
        const auto found =
            std::ranges::find(control.choices(), value, &ui::ChoiceList::Choice::value);
        cell.text = toQt(found == control.choices().end() ? value : found->text);
        cell.editable = true;
    }
    void visit(ui::FlagChoice& control) override {
        cell.text = toQt(control.stateText(std::get<bool>(control.value())));
        cell.editable = true;
    }
    void visit(ui::PushButton&) override {}

    Cell cell;

private:
    void takeText(const ui::Control& control, bool editable) {
        cell.text = toQt(std::get<std::u16string>(control.value()));
        cell.editable = editable;
    }
};

} // namespace

std::vector<ui::Control*> cellControls(const core::OpenForm& form) {
    auto controls = form.controls();
    std::erase_if(controls, [](const ui::Control* control) { return !control->property(); });
    return controls;
}

Cell readCell(ui::Control& control) {
    if (!control.isVisible())
        return {};
    Reader reader;
    control.accept(reader);
    if (const auto* const error = control.error())
        reader.cell.error = toQt(*error);
    return std::move(reader.cell);
}

} // namespace corvane::workbench::gui
