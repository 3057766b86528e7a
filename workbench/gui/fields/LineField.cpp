#include "workbench/gui/fields/LineField.hpp"

#include "workbench/gui/Text.hpp"

namespace corvane::workbench::gui {

LineField::LineField(ui::TextField& control, QWidget* parent)
    : Field(control, *new QLineEdit(parent)),
      control_(&control),
      line_(static_cast<QLineEdit*>(&widget())) {
    const auto& settings = control.settings();
    line_->setPlaceholderText(toQt(settings.placeholder));
    if (settings.minimumWidth > 0)
        line_->setMinimumWidth(settings.minimumWidth);
    connect(line_, &QLineEdit::textEdited, this, [this](const QString& typed) {
        fixUp(typed);
        emit edited();
    });
}

void LineField::refresh() {
    const auto text = toQt(std::get<std::u16string>(control_->value()));
    typed_ = text;
    if (line_->text() != text)
        line_->setText(text);
}

std::optional<ui::ControlValue> LineField::entered() const { return toUtf16(typed_); }

void LineField::fixUp(const QString& typed) {
    typed_ = typed;
    if (!control_->settings().fixUp)
        return;
    const auto cursor = static_cast<std::size_t>(line_->cursorPosition());
    auto anchor = cursor;
    if (line_->hasSelectedText())
        anchor = static_cast<std::size_t>(line_->selectionStart() == line_->cursorPosition()
                                              ? line_->selectionEnd()
                                              : line_->selectionStart());
    ui::TextEdit edit{toUtf16(typed), cursor, anchor};
    control_->settings().fixUp(edit);
    const auto fixed = toQt(edit.text);
    if (fixed == typed)
        return;
    line_->setText(fixed);
    if (edit.anchor == edit.cursor)
        line_->setCursorPosition(static_cast<int>(edit.cursor));
    else
        line_->setSelection(static_cast<int>(edit.anchor),
                            static_cast<int>(edit.cursor) - static_cast<int>(edit.anchor));
}

} // namespace corvane::workbench::gui
