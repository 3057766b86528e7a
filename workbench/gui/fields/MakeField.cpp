// The fields for the kinds of controls, and the choice among them.
#include "workbench/gui/fields/Field.hpp"
#include "workbench/gui/fields/ReferenceField.hpp"
#include "workbench/gui/fields/UnsignedSpinBox.hpp"
#include "workbench/gui/look/Icons.hpp"
#include "workbench/gui/look/PlainText.hpp"
#include "workbench/gui/look/Text.hpp"

#include <corvane/workbench/ui/Choice.hpp>
#include <corvane/workbench/ui/InfoField.hpp>
#include <corvane/workbench/ui/PushButton.hpp>
#include <corvane/workbench/ui/SpinBox.hpp>
#include <corvane/workbench/ui/TextField.hpp>

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

/// Shows a text without moving the cursor where it stands there already.
void showIn(QLineEdit& line, const QString& text) {
    if (line.text() != text)
        line.setText(text);
}

/// A text field: a line with a placeholder, which shows how the control corrects what is typed.
class LineField final : public Field {
public:
    LineField(ui::TextField& control, QWidget* parent)
        : Field(control, *new QLineEdit(parent)),
          control_(&control),
          line_(static_cast<QLineEdit*>(&widget())) {
        const auto& settings = control.settings();
        line_->setPlaceholderText(toQt(settings.placeholder));
        if (settings.minimumWidth > 0)
            line_->setMinimumWidth(settings.minimumWidth);
        connect(line_, &QLineEdit::textEdited, this, [this](const QString& typed) {
            typed_ = typed;
            showCorrected();
            emit edited();
        });
    }

    void refresh() override {
        typed_ = toQt(std::get<std::u16string>(control_->value()));
        showIn(*line_, typed_);
    }

    void selectContent() override { line_->selectAll(); }

    /// As it was typed: the control corrects whatever is set.
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override {
        return toUtf16(typed_);
    }

    [[nodiscard]] std::optional<int> preferredWidth() const override {
        return control_->settings().preferredWidth;
    }

private:
    void showCorrected() {
        const auto cursor = line_->cursorPosition();
        auto anchor = cursor;
        if (line_->hasSelectedText())
            anchor =
                line_->selectionStart() == cursor ? line_->selectionEnd() : line_->selectionStart();
        const auto edit = control_->corrected(
            {toUtf16(typed_), static_cast<std::size_t>(cursor), static_cast<std::size_t>(anchor)});
        const auto text = toQt(edit.text);
        if (text == typed_)
            return;
        line_->setText(text);
        if (edit.anchor == edit.cursor)
            line_->setCursorPosition(static_cast<int>(edit.cursor));
        else
            line_->setSelection(static_cast<int>(edit.anchor),
                                static_cast<int>(edit.cursor) - static_cast<int>(edit.anchor));
    }

    ui::TextField* control_;
    QLineEdit* line_;
    QString typed_;
};

/// A number with limits, of any unsigned width.
class NumberField final : public Field {
public:
    NumberField(ui::SpinBoxControl& control, QWidget* parent)
        : Field(control, *new UnsignedSpinBox(parent)),
          control_(&control),
          box_(static_cast<UnsignedSpinBox*>(&widget())) {
        const auto& range = control.range();
        box_->setRange(range.minimum, range.maximum, range.step);
        box_->setMinimumDigits(control.settings().minimumDigits);
        connect(box_, &UnsignedSpinBox::valueEntered, this, &Field::edited);
    }

    void refresh() override { box_->setValue(std::get<std::uint64_t>(control_->value())); }
    void commit() override { box_->takeText(); }
    void selectContent() override { box_->selectAll(); }

    [[nodiscard]] std::optional<ui::ControlValue> entered() const override {
        return static_cast<std::uint64_t>(box_->value());
    }
    [[nodiscard]] std::optional<int> preferredWidth() const override {
        return control_->settings().preferredWidth;
    }

private:
    ui::SpinBoxControl* control_;
    UnsignedSpinBox* box_;
};

/// A text that can be read and copied but not changed.
class InfoTextField final : public Field {
public:
    InfoTextField(ui::InfoField& control, QWidget* parent)
        : Field(control, *new QLineEdit(parent)), line_(static_cast<QLineEdit*>(&widget())) {
        line_->setReadOnly(true);
        line_->setFrame(false);
    }

    void refresh() override { showIn(*line_, toQt(std::get<std::u16string>(control().value()))); }
    void selectContent() override { line_->selectAll(); }
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override { return std::nullopt; }

private:
    QLineEdit* line_;
};

/// A choice of one out of several texts, or between the two states of a flag.
class ChoiceField final : public Field {
public:
    ChoiceField(ui::ChoiceList& control, QWidget* parent)
        : ChoiceField(static_cast<ui::Control&>(control), parent) {
        for (const auto& choice : control.choices())
            offer(choice.value, toQt(choice.text));
    }

    ChoiceField(ui::FlagChoice& control, QWidget* parent)
        : ChoiceField(static_cast<ui::Control&>(control), parent) {
        for (const bool state : {false, true})
            offer(state, toQt(control.stateText(state)));
    }

    // A stored value that is not offered is shown in place of a choice, and none is chosen.
    void refresh() override {
        const auto value = control().value();
        const auto found = std::ranges::find(values_, value);
        const auto index = found == values_.end() ? -1 : static_cast<int>(found - values_.begin());
        const auto* const text = std::get_if<std::u16string>(&value);
        box_->setPlaceholderText(index < 0 && text != nullptr ? toQt(*text) : QString());
        if (box_->currentIndex() != index)
            box_->setCurrentIndex(index);
    }

    [[nodiscard]] std::optional<ui::ControlValue> entered() const override {
        const int index = box_->currentIndex();
        if (index < 0)
            return std::nullopt;
        return values_[static_cast<std::size_t>(index)];
    }

private:
    ChoiceField(ui::Control& control, QWidget* parent)
        : Field(control, *new QComboBox(parent)), box_(static_cast<QComboBox*>(&widget())) {
        box_->setMaxVisibleItems(20);
        connect(box_, &QComboBox::activated, this, &Field::edited);
    }

    template <class Value>
    void offer(const Value& value, const QString& text) {
        values_.emplace_back(value);
        box_->addItem(text);
    }

    QComboBox* box_;
    std::vector<ui::ControlValue> values_; // of the choices, in their order
};

/// A button that imports a file.
class ButtonField final : public Field {
public:
    ButtonField(ui::PushButton& control, QWidget* parent)
        : Field(control, *new QPushButton(icon("import"),
                                          withoutMnemonic(toQt(control.texts().label)), parent)) {
        auto* const button = static_cast<QPushButton*>(&widget());
        button->setAutoDefault(true);
        connect(button, &QPushButton::clicked, this, &Field::pressed);
    }

    void refresh() override {}
    [[nodiscard]] std::optional<ui::ControlValue> entered() const override { return std::nullopt; }
    [[nodiscard]] std::optional<int> preferredWidth() const override { return std::nullopt; }
};

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
    widget.setObjectName(toQt(control.key()));
    widget.setToolTip(withoutFormat(toQt(texts.description)));
    widget.setWhatsThis(withoutFormat(toQt(texts.help)));
    widget.setAccessibleName(toQt(texts.label));
    widget.setAccessibleDescription(toQt(texts.description));
    widget.setFocusPolicy(Qt::StrongFocus); // turning the wheel over a field is no visit to it
    widget.setAcceptDrops(false);           // files are dropped on the window
    maker.made->refresh();
    return maker.made;
}

} // namespace corvane::workbench::gui
