#include "workbench/gui/look/TextWindow.hpp"

#include "workbench/gui/look/PlainText.hpp"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace corvane::workbench::gui {

namespace {

constexpr QSize kSize(640, 360);

} // namespace

void showTextWindow(QWidget& owner, const QString& title, const QString& text, TextKind kind) {
    auto* const dialog = new QDialog(&owner);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(withoutModifiedMark(title));
    auto* const lines = new QPlainTextEdit(text, dialog);
    lines->setReadOnly(true);
    if (kind == TextKind::source) {
        lines->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
        lines->setLineWrapMode(QPlainTextEdit::NoWrap);
    }
    lines->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    lines->setAccessibleName(title);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::close);
    auto* const layout = new QVBoxLayout(dialog);
    layout->addWidget(lines);
    layout->addWidget(buttons);
    dialog->resize(kSize);
    dialog->show();
}

} // namespace corvane::workbench::gui
