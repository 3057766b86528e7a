#include "workbench/gui/Text.hpp"
#include "workbench/gui/fields/ButtonField.hpp"
#include "workbench/gui/fields/ChoiceField.hpp"
#include "workbench/gui/fields/InfoTextField.hpp"
#include "workbench/gui/fields/LineField.hpp"
#include "workbench/gui/fields/NumberField.hpp"
#include "workbench/gui/fields/ReferenceField.hpp"

namespace corvane::workbench::gui {

namespace {

class Maker final : public ui::ControlVisitor {
public:
    explicit Maker(QWidget* parent) : parent_(parent) {}

    void visit(ui::TextField& control) override { made = new LineField(control, parent_); }
    void visit(ui::SpinBoxControl& control) override { made = new NumberField(control, parent_); }
    void visit(ui::InfoField& control) override { made = new InfoTextField(control, parent_); }
    void visit(ui::ChoiceList& control) override { made = new ChoiceField(control, parent_); }
    void visit(ui::FlagChoice& control) override { made = new ChoiceField(control, parent_); }
    void visit(ui::ReferenceChooser& control) override {
        made = new ReferenceField(control, parent_);
    }
    void visit(ui::PushButton& control) override { made = new ButtonField(control, parent_); }

    Field* made = nullptr;

private:
    QWidget* parent_;
};

} // namespace

Field* makeField(ui::Control& control, QWidget* parent) {
    Maker maker(parent);
    control.accept(maker);
    auto& widget = maker.made->widget();
    const auto& texts = control.texts();
    widget.setObjectName(toQt(texts.label));
    widget.setToolTip(toQt(texts.description));
    widget.setWhatsThis(toQt(texts.help));
    widget.setAccessibleName(toQt(texts.label));
    widget.setAccessibleDescription(toQt(texts.description));
    widget.setFocusPolicy(Qt::StrongFocus); // turning the wheel over a field is no visit to it
    widget.setAcceptDrops(false);           // files are dropped on the window
    maker.made->refresh();
    return maker.made;
}

} // namespace corvane::workbench::gui
