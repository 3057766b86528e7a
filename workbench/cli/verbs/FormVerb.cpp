#include "workbench/cli/output/TextOutput.hpp"
#include "workbench/cli/verbs/Session.hpp"
#include "workbench/cli/verbs/Verbs.hpp"
#include "workbench/core/project/OpenForm.hpp"

#include <corvane/utils/json/Encoder.hpp>
#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <algorithm>
#include <stdexcept>

namespace corvane::workbench::cli {

namespace {

namespace encoder = utils::json::encoder;

/// Writes what every control has, then what its kind adds.
class JsonWriter final : public ui::ControlVisitor {
public:
    explicit JsonWriter(encoder::Array& controls) : controls_(&controls) {}

    void visit(ui::TextField& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "text", control);
        object.addWideString("placeholder", control.settings().placeholder);
    }
    void visit(ui::SpinBoxControl& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "spin", control);
        object.addNumber("minimum", control.range().minimum);
        object.addNumber("maximum", control.range().maximum);
        object.addNumber("step", control.range().step);
    }
    void visit(ui::InfoField& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "info", control);
    }
    void visit(ui::ChoiceList& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "choice", control);
        auto choices = object.addArray("choices");
        for (const auto& choice : control.choices()) {
            auto entry = choices.addObject();
            entry.addWideString("value", choice.value);
            entry.addWideString("text", choice.text);
        }
    }
    void visit(ui::FlagChoice& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "flag", control);
        auto choices = object.addArray("choices");
        for (const bool state : {false, true}) {
            auto entry = choices.addObject();
            entry.add("value", state);
            entry.addWideString("text", control.stateText(state));
        }
    }
    void visit(ui::ReferenceChooser& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "reference", control);
        auto candidates = object.addArray("candidates");
        for (const auto* const candidate : control.candidates())
            candidates.addStringView(candidate->path());
    }
    void visit(ui::PushButton& control) override {
        auto object = controls_->addObject();
        writeCommon(object, "button", control);
        object.addStringView("extension", control.extension());
    }

private:
    static void writeCommon(encoder::Object& object, std::string_view editor,
                            const ui::Control& control) {
        object.addWideString("label", control.texts().label);
        object.addWideString("description", control.texts().description);
        object.addWideString("help", control.texts().help);
        object.addStringView("editor", editor);
        object.add("visible", control.isVisible());
        writeValue(object, control.value());
        if (const auto* const error = control.error())
            object.addWideString("error", *error);
        else
            object.addNull("error");
    }

    static void writeValue(encoder::Object& object, const ui::ControlValue& value) {
        constexpr encoder::Key key("value");
        if (const auto* const text = std::get_if<std::u16string>(&value))
            object.addWideString(key, *text);
        else if (const auto* const flag = std::get_if<bool>(&value))
            object.add(key, *flag);
        else if (const auto* const number = std::get_if<std::uint64_t>(&value))
            object.addNumber(key, *number);
        else
            object.addNull(key);
    }

    encoder::Array* controls_;
};

void writeJson(utils::io::OutputStream& output, const core::OpenForm& form) {
    encoder::Document document(output, encoder::Format::lines);
    {
        auto array = document.array();
        JsonWriter writer(array);
        for (ui::Control* const control : form.controls())
            control->accept(writer);
    }
    output.put('\n');
}

std::string labelOf(const ui::Control& control) { return narrow(control.texts().label); }

/// Writes a visible control's label, its value as it is stored and, where the editor shows it by
/// another text, that text, too; then its error.
class TextWriter final : public ui::ControlVisitor {
public:
    TextWriter(TextOutput& output, std::size_t labelWidth)
        : output_(&output), labelWidth_(labelWidth) {}

    void visit(ui::TextField& control) override { write(control, textOf(control.value()), {}); }
    void visit(ui::SpinBoxControl& control) override {
        write(control, textOf(control.value()), {});
    }
    void visit(ui::InfoField& control) override { write(control, textOf(control.value()), {}); }
    void visit(ui::ChoiceList& control) override {
        const auto value = textOf(control.value());
        std::string shown;
        for (const auto& choice : control.choices())
            if (narrow(choice.value) == value)
                shown = narrow(choice.text);
        write(control, value, shown);
    }
    void visit(ui::FlagChoice& control) override {
        const auto value = control.value();
        write(control, textOf(value), narrow(control.stateText(std::get<bool>(value))));
    }
    void visit(ui::ReferenceChooser& control) override {
        write(control, textOf(control.value()), {});
    }
    void visit(ui::PushButton& control) override {
        write(control, "imports " + control.extension() + " files", {});
    }

private:
    void write(const ui::Control& control, const std::string& value, const std::string& shown) {
        if (!control.isVisible())
            return;
        output_->writeBold(padded(labelOf(control), labelWidth_));
        if (!value.empty())
            output_->write("  " + value);
        if (!shown.empty() && shown != value)
            output_->write(" (" + shown + ")");
        if (const auto* const error = control.error())
            output_->write("  [error: " + narrow(*error) + "]");
        output_->endLine();
    }

    TextOutput* output_;
    std::size_t labelWidth_;
};

void writeText(TextOutput& output, const core::OpenForm& form) {
    const auto controls = form.controls();
    if (controls.empty())
        output.writeLine("The element has no properties.");
    std::size_t width = 0;
    for (const ui::Control* const control : controls)
        if (control->isVisible())
            width = std::max(width, widthOf(labelOf(*control)));
    TextWriter writer(output, width);
    for (ui::Control* const control : controls)
        control->accept(writer);
}

} // namespace

ExitCode run(const FormRequest& request, Session& session) {
    const auto project = session.open(request.project);
    if (request.path == kProjectPath)
        throw std::runtime_error("the project itself has no form");
    const core::OpenForm form(project.element(request.path));
    if (request.json)
        session.output().writeDocument([&](auto& stream) { writeJson(stream, form); });
    else
        writeText(session.output(), form);
    return kDone;
}

} // namespace corvane::workbench::cli
