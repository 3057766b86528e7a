#pragma once

#include "workbench/gui/session/Dialogs.hpp"

namespace corvane::workbench::gui {

/// Asks with the desktop's own dialogs. File choosers begin where the last one ended.
class NativeDialogs final : public Dialogs {
public:
    QString chooseProjectToOpen(QWidget* parent) override;
    QString chooseProjectToSave(QWidget* parent, const QString& suggestion) override;
    QString chooseFileToImport(QWidget* parent, const QString& title,
                               const QString& extension) override;
    Unsaved askUnsaved(QWidget* parent, const QString& projectName) override;
    bool confirm(QWidget* parent, const Question& question) override;
    int choose(QWidget* parent, const Choice& question) override;
    std::optional<QString> enterText(QWidget* parent, const Entry& entry) override;
    QString chooseOne(QWidget* parent, const QString& title, const QString& text,
                      const QStringList& choices) override;

private:
    QString lastFolder_;
};

} // namespace corvane::workbench::gui
