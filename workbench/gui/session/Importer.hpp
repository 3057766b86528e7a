#pragma once

#include "workbench/core/project/OpenForm.hpp"
#include "workbench/gui/look/NoticeBar.hpp"
#include "workbench/gui/session/Dialogs.hpp"
#include "workbench/gui/session/ImportDraft.hpp"
#include "workbench/gui/session/ProjectSession.hpp"

#include <corvane/workbench/ui/PushButton.hpp>

#include <QString>

#include <functional>
#include <memory>

namespace corvane::workbench::gui {

/// Imports files into the project: by the button of a form, or by a file that was dropped. Both the
/// reading of the file and the merging run beside the window. Where the import would change what is
/// there, the user is asked beforehand.
class Importer : public QObject {
    Q_OBJECT

public:
    /// Files are asked for above `window`. All must outlive the object.
    Importer(ProjectSession& session, Dialogs& dialogs, NoticeBar& notices, QWidget& window);

    /// Asks for a file and lets the button with this key of the element's form import it, whatever
    /// the file is called: the extension of the button is what it offers first.
    void chooseAndImport(model::Element& target, const QString& key);

    /// Imports a file into `preferred` or what is above it, if that takes such files, else into the
    /// one element that does, a new one if there is none; asks where there are several.
    void importFile(const QString& file, model::Element* preferred);

    /// Whether the user is being asked: no other import begins until `answered`.
    [[nodiscard]] bool isAsking() const { return draft_ != nullptr; }

signals:
    /// The user is to see what an import would change, and to confirm or cancel it.
    void reviewWanted(std::shared_ptr<corvane::workbench::gui::ImportDraft> draft);
    void answered();

    /// An import has succeeded; these are the elements at the top of what came in.
    void imported(const std::vector<model::Element*>& elements);

private:
    using Then = std::move_only_function<void(ui::ImportedDocument)>;
    struct Source;

    using ButtonOf = std::function<ui::PushButton*(const core::OpenForm&)>;

    /// The button for files that are called so.
    [[nodiscard]] static ButtonOf buttonFor(const QString& file);
    /// Lets a button of the target's form import a file.
    void importInto(model::Element& target, const QString& file, const ButtonOf& buttonOf,
                    bool inAnyCase = false);
    /// Likewise the button for such files.
    void importInto(model::Element& target, const QString& file);
    void importIntoNew(const QString& file, const std::string& extension);
    void read(Source source, const QString& file, Then then);
    /// Imports at once what cannot change anything that is there.
    void importFirst(model::Element& target, const QString& file, ui::ImportedDocument document,
                     bool targetIsNew);
    /// Finds out what the import would change, and asks where it does, or in any case.
    void review(model::Element& target, const QString& file, ui::ImportedDocument document,
                bool inAnyCase);
    void connectDraft(bool inAnyCase);
    void takePreview(bool inAnyCase);
    void tellNothingChanges(const ImportDraft& draft);
    /// Ends the asking; the draft lives on as long as who is given it wants.
    std::shared_ptr<ImportDraft> endReview();
    void carryOut(const ImportDraft& draft, bool targetIsNew);
    /// Tells what came in, and the warnings, a line each.
    void tell(const QString& summary, const QStringList& lines);
    /// Tells why a file cannot be read, with what helps and where the file is at fault.
    void fail(const QString& file, const ui::ImportFailure& failure);
    void fail(const QString& reason);
    [[nodiscard]] model::Element* chooseTarget(const std::string& extension);

    ProjectSession* session_;
    Dialogs* dialogs_;
    NoticeBar* notices_;
    QWidget* window_;
    std::shared_ptr<ImportDraft> draft_; // while the user is asked, and before
};

/// The extension of a file's name in lower case, with its dot; empty if there is none.
[[nodiscard]] std::string extensionOf(const QString& file);

} // namespace corvane::workbench::gui
