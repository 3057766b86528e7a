#include "workbench/gui/window/NativeDialogs.hpp"

#include "workbench/gui/look/Text.hpp"

#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>

#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::Dialogs";

QString remember(QString& folder, const QString& file) {
    if (!file.isEmpty())
        folder = QFileInfo(file).absolutePath();
    return file;
}

QString projectFilter() { return translated(kContext, "Projects (*.json);;All files (*)"); }

} // namespace

Dialogs::~Dialogs() = default;

QString NativeDialogs::chooseProjectToOpen(QWidget* parent) {
    return remember(lastFolder_,
                    QFileDialog::getOpenFileName(parent, translated(kContext, "Open Project"),
                                                 lastFolder_, projectFilter()));
}

QString NativeDialogs::chooseProjectToSave(QWidget* parent, const QString& suggestion) {
    QFileDialog dialog(parent, translated(kContext, "Save Project"), lastFolder_, projectFilter());
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(QStringLiteral("json"));
    if (!suggestion.isEmpty())
        dialog.selectFile(suggestion);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return remember(lastFolder_, dialog.selectedFiles().value(0));
}

QString NativeDialogs::chooseFileToImport(QWidget* parent, const QString& title,
                                          const QString& extension) {
    const auto filter =
        extension.isEmpty()
            ? translated(kContext, "All files (*)")
            : translated(kContext, "{} files (*{} *{});;All files (*)",
                         {extension.mid(1).toUpper(), extension, extension.toUpper()});
    return remember(lastFolder_, QFileDialog::getOpenFileName(parent, title, lastFolder_, filter));
}

Dialogs::Unsaved NativeDialogs::askUnsaved(QWidget* parent, const QString& projectName) {
    QMessageBox box(QMessageBox::Warning, translated(kContext, "Unsaved Changes"),
                    translated(kContext, "Save the changes in “{}”?", {projectName}),
                    QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, parent);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(translated(kContext, "Otherwise they are lost."));
    box.setDefaultButton(QMessageBox::Save);
    switch (box.exec()) {
    case QMessageBox::Save:
        return Unsaved::save;
    case QMessageBox::Discard:
        return Unsaved::discard;
    default:
        return Unsaved::cancel;
    }
}

bool NativeDialogs::confirm(QWidget* parent, const Question& question) {
    return choose(parent, {.title = question.title,
                           .text = question.text,
                           .answers = {question.accept, question.reject},
                           .byDefault = 1,
                           .onEscape = 1}) == 0;
}

int NativeDialogs::choose(QWidget* parent, const Choice& question) {
    QMessageBox box(QMessageBox::Question, question.title, question.text, QMessageBox::NoButton,
                    parent);
    box.setTextFormat(Qt::PlainText);
    QList<QAbstractButton*> buttons;
    for (qsizetype i = 0; i != question.answers.size(); ++i) {
        const auto role =
            i == question.onEscape ? QMessageBox::RejectRole : QMessageBox::AcceptRole;
        auto* const button = box.addButton(question.answers[i], role);
        buttons += button;
        if (i == question.byDefault)
            box.setDefaultButton(button);
        if (i == question.onEscape)
            box.setEscapeButton(button);
    }
    box.exec();
    const auto given = buttons.indexOf(box.clickedButton());
    return given < 0 ? question.onEscape : static_cast<int>(given);
}

std::optional<QString> NativeDialogs::enterText(QWidget* parent, const Entry& entry) {
    bool accepted = false;
    auto text = QInputDialog::getText(parent, entry.title, entry.text, QLineEdit::Normal,
                                      entry.value, &accepted);
    return accepted ? std::optional(std::move(text)) : std::nullopt;
}

QString NativeDialogs::chooseOne(QWidget* parent, const QString& title, const QString& text,
                                 const QStringList& choices) {
    bool accepted = false;
    const auto choice = QInputDialog::getItem(parent, title, text, choices, 0, false, &accepted);
    return accepted ? choice : QString();
}

} // namespace corvane::workbench::gui
