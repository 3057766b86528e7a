#pragma once

#include "workbench/gui/session/ProjectSession.hpp"

#include <corvane/workbench/ui/ImportedDocument.hpp>

#include <QObject>
#include <QString>

#include <memory>
#include <string>
#include <vector>

namespace corvane::workbench::gui {

/// An import that was read and is not made yet. It finds out what the import would change, and
/// keeps how the user wants it: the options, and values of new elements that were corrected
/// beforehand. The project stays as it is.
class ImportDraft final : public QObject {
    Q_OBJECT

public:
    /// The document of `file` shall be imported below `target`. Both the session and the target
    /// must outlive the draft, or it must be `drop`ped before.
    ImportDraft(ProjectSession& session, model::Element& target, QString file,
                ui::ImportedDocument document);

    [[nodiscard]] const QString& file() const { return file_; }
    [[nodiscard]] model::Element& target() const { return *target_; }
    /// What the plug-in says of the file, and what it found in it.
    [[nodiscard]] const std::vector<ui::ImportWarning>& warnings() const { return warnings_; }
    [[nodiscard]] const std::vector<ui::MemoryUse>& memory() const { return memory_; }
    /// What is to be imported, as the user wants it.
    [[nodiscard]] const ProjectSession::ImportPlan& plan() const { return plan_; }

    void setOptions(const core::ImportOptions& options);
    /// Sets a field of the element with that place at the top of the document, by way of a control
    /// of its form.
    void correct(std::size_t position, ui::Control& control, const ui::ControlValue& value);

    /// Finds out what the import would do; `compared` or `failed` follows. Nothing while the
    /// session is busy.
    void compare();
    /// What `compare` found out last; null before it has.
    [[nodiscard]] const std::shared_ptr<const core::ImportPreview>& preview() const {
        return preview_;
    }
    /// Whether that is what the import would do as it is wanted now.
    [[nodiscard]] bool isCurrent() const { return current_; }

    /// The element with that place at the top of the document as it would come in, without what is
    /// below it: to be looked at by way of its form. Null after `drop`.
    [[nodiscard]] model::Element* newElement(std::size_t position) const;

    /// The user wants it, or does not. Nothing of the model may be in use any more that
    /// `newElement` gave.
    void confirm();
    void cancel();
    /// Lets go of everything of the model.
    void drop() { top_.reset(); }

signals:
    /// `preview` is new.
    void compared();
    /// Why it could not be found out; `stopped` where the user did not want to wait.
    void failed(const QString& reason, bool stopped);
    void confirmed();
    void cancelled();

private:
    void take(core::ImportPreview preview);
    void stageTop();
    [[nodiscard]] bool changesTheTop() const;

    ProjectSession* session_;
    model::Element* target_;
    QString file_;
    std::vector<ui::ImportWarning> warnings_;
    std::vector<ui::MemoryUse> memory_;
    ProjectSession::ImportPlan plan_;
    std::shared_ptr<const core::ImportPreview> preview_;
    std::unique_ptr<core::StagedImport> top_;
    bool current_ = false;
};

} // namespace corvane::workbench::gui
