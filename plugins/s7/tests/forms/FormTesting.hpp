#pragma once

#include "ElementTree.hpp"

#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/ReferenceChooser.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

/// What the tests of forms share.
namespace corvane::workbench::plugins::s7Driver::testing {

inline constexpr std::string_view kNoFormError =
    "internal error: attempt to access default constructed corvane::workbench::ui::Form object";

/// One row of a form: its editor, and its texts in English.
struct FormRow {
    std::string editor;
    std::string label;
    std::string description;
    std::string help;

    friend bool operator==(const FormRow&, const FormRow&) = default;
    friend std::ostream& operator<<(std::ostream& out, const FormRow& row) {
        return out << row.editor << " \"" << row.label << "\" \"" << row.description << "\" \""
                   << row.help << '"';
    }
};

/// Tells the kind of a control.
class EditorOf final : public ui::ControlVisitor {
public:
    explicit EditorOf(ui::Control& control) { control.accept(*this); }
    [[nodiscard]] const std::string& name() const { return name_; }

    void visit(ui::TextField&) override { name_ = "text"; }
    void visit(ui::SpinBoxControl&) override { name_ = "spin"; }
    void visit(ui::InfoField&) override { name_ = "info"; }
    void visit(ui::ChoiceList&) override { name_ = "choice"; }
    void visit(ui::FlagChoice&) override { name_ = "flag"; }
    void visit(ui::ReferenceChooser&) override { name_ = "reference"; }
    void visit(ui::PushButton&) override { name_ = "button"; }

private:
    std::string name_;
};

/// The form of an element, as a host builds it.
class ShownForm {
public:
    explicit ShownForm(skill::Element& element) : binding_(element.createBinding()) {
        binding_->buildForm(ui::Form(contents_));
    }

    [[nodiscard]] bool moveTo(skill::Element& element) { return binding_->moveTo(element); }

    [[nodiscard]] std::vector<FormRow> rows() const {
        std::vector<FormRow> rows;
        for (auto* const control : contents_.controls()) {
            const auto& texts = control->texts();
            rows.push_back({EditorOf(*control).name(), utf8(texts.label), utf8(texts.description),
                            utf8(texts.help)});
        }
        return rows;
    }

    /// The control at that place in the form.
    template <class Control = ui::Control>
    [[nodiscard]] Control& at(std::size_t place) const {
        return dynamic_cast<Control&>(*contents_.controls().at(place));
    }

private:
    std::unique_ptr<skill::Binding> binding_;
    ui::FormContents contents_;
};

/// How many of the form's controls stand in its group; the others are added to the form itself. A
/// control that is added before them parts the two.
inline std::ptrdiff_t groupedControls(skill::Element& element) {
    ui::PushButton marker("marker", {}, {}, {});
    const auto binding = element.createBinding();
    ui::FormContents contents;
    ui::Form(contents).add(marker);
    binding->buildForm(ui::Form(contents));
    const auto controls = contents.controls();
    return std::ranges::find(controls, &marker) - controls.begin();
}

/// Checks that each text of an element's form, buttons' help aside, was translated in `context`.
inline void expectContext(skill::Element& element, std::string_view context) {
    const auto english = ShownForm(element).rows();
    const MarkingTranslator translator;
    const auto translated = ShownForm(element).rows();
    ASSERT_EQ(english.size(), translated.size());
    const auto marked = [&](const std::string& text) {
        return text.empty() ? text : std::string(context).append("|").append(text);
    };
    for (std::size_t i = 0; i != english.size(); ++i)
        EXPECT_EQ(translated[i],
                  (FormRow{english[i].editor, marked(english[i].label),
                           marked(english[i].description), marked(english[i].help)}));
}

/// The error text at a control; empty where there is none.
inline std::string errorAt(const ui::Control& control) {
    return control.error() == nullptr ? std::string() : utf8(*control.error());
}

/// Why a value was refused; empty where it was taken.
inline std::string reasonOf(const ui::SetResult& result) {
    return result ? std::string() : utf8(result.error());
}

/// A number as a control takes it.
inline ui::ControlValue number(std::uint64_t value) { return value; }

/// A text as a control takes it.
inline ui::ControlValue text(std::u16string_view value) { return std::u16string(value); }

/// Checks that a spin box has this range, step 1, and the look of all spin boxes.
inline void expectSpinBox(const ui::SpinBoxControl& box, std::uint64_t minimum,
                          std::uint64_t maximum) {
    EXPECT_EQ(box.range().minimum, minimum);
    EXPECT_EQ(box.range().maximum, maximum);
    EXPECT_EQ(box.range().step, 1U);
    EXPECT_EQ(box.settings().preferredWidth, 200);
    EXPECT_EQ(box.settings().minimumDigits, 1);
}

/// Checks that a binding that is given no form refuses it.
inline void expectFormNeeded(skill::Element& element) {
    try {
        element.createBinding()->buildForm(ui::Form());
        ADD_FAILURE() << "the form was built";
    } catch (const std::logic_error& error) {
        EXPECT_EQ(error.what(), kNoFormError);
    }
}

} // namespace corvane::workbench::plugins::s7Driver::testing
