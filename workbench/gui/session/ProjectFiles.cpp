#include "workbench/gui/session/ProjectFiles.hpp"

#include "workbench/core/files/FileReplacement.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <QFileInfo>
#include <QRegularExpression>

#include <memory>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::ProjectFiles";

std::filesystem::path pathOf(const QString& file) { return toUtf8(file); }

} // namespace

ProjectFiles::ProjectFiles(ProjectSession& session, Dialogs& dialogs, NoticeBar& notices,
                           QWidget& window)
    : QObject(&window),
      session_(&session),
      dialogs_(&dialogs),
      notices_(&notices),
      window_(&window),
      watch_(this) {
    connect(&watch_, &FileWatch::changed, this, &ProjectFiles::tellOfChange);
}

QString ProjectFiles::name() const {
    return file_.isEmpty() ? translated(kContext, "Untitled") : QFileInfo(file_).fileName();
}

void ProjectFiles::newProject() {
    whenSafe([this] {
        setFile({});
        notices_->clear();
        session_->replaceProject(std::make_unique<core::Project>(session_->plugins()));
    });
}

void ProjectFiles::open() {
    whenSafe([this] {
        const auto file = dialogs_->chooseProjectToOpen(window_);
        if (!file.isEmpty())
            load(file, file, false, {});
    });
}

void ProjectFiles::open(const QString& file, Then then) {
    whenSafe([this, file, then = std::move(then)]() mutable {
        load(file, file, false, std::move(then));
    });
}

void ProjectFiles::recover(const QString& remains, const QString& file, Then then) {
    load(remains, file, true, std::move(then));
}

void ProjectFiles::load(const QString& source, const QString& file, bool unsaved, Then then) {
    if (session_->isBusy())
        return;
    auto loaded = std::make_shared<std::unique_ptr<core::Project>>();
    session_->runner().run(
        translated(kContext, "Opening {}", {QFileInfo(file.isEmpty() ? source : file).fileName()}),
        [&plugins = session_->plugins(), loaded, path = pathOf(source)] {
            *loaded = std::make_unique<core::Project>(plugins, path);
        },
        [this, loaded, file, unsaved,
         then = std::move(then)](const std::exception_ptr& failure) mutable {
            if (failure) {
                settings::forgetRecentProject(file);
                notices_->showNotice(NoticeBar::Kind::error, messageOf(failure));
                return;
            }
            notices_->clear();
            setFile(file);
            session_->replaceProject(std::move(*loaded), unsaved, std::move(then));
        });
}

void ProjectFiles::save(Then then) {
    if (file_.isEmpty()) {
        saveAs(std::move(then));
        return;
    }
    if (!watch_.isChanged())
        write(file_, watch_.known(), std::move(then));
    else if (mayOverwrite())
        write(file_, std::nullopt, std::move(then));
}

bool ProjectFiles::mayOverwrite() {
    return dialogs_->confirm(
        window_,
        {.title = translated(kContext, "File Changed on Disk"),
         .text = translated(kContext,
                            "“{}” was changed by another program since it was read. Saving "
                            "overwrites those changes.",
                            {name()}),
         .accept = translated(kContext, "Overwrite"),
         .reject = translated(kContext, "Cancel")});
}

void ProjectFiles::saveAs(Then then) {
    const auto file =
        dialogs_->chooseProjectToSave(window_, file_.isEmpty() ? proposedName() : file_);
    if (!file.isEmpty())
        write(file, std::nullopt, std::move(then));
}

// Of what stands first in the project, as far as a file may have that name.
QString ProjectFiles::proposedName() const {
    static const QRegularExpression kForbidden(QStringLiteral(R"([/\\:*?"<>|\x00-\x1f])"));
    const auto top = session_->root().childElements();
    auto name =
        top.empty() ? translated(kContext, "Project") : toQt(std::string_view(top.front()->name()));
    return name.replace(kForbidden, QStringLiteral("_")) + QStringLiteral(".json");
}

// Another program may still change the file when it was looked at: what the user did not know then
// is asked about now.
void ProjectFiles::write(const QString& file, const std::optional<core::FileIdentity>& known,
                         Then then) {
    if (session_->isBusy())
        return;
    session_->runner().run(
        translated(kContext, "Saving {}", {QFileInfo(file).fileName()}),
        [&project = session_->project(), path = pathOf(file), known] {
            project.saveTo(path, known);
        },
        [this, file, then = std::move(then)](const std::exception_ptr& failure) mutable {
            if (failure) {
                tellOfFailure(file, failure, std::move(then));
                return;
            }
            notices_->clear();
            session_->markSaved();
            setFile(file, session_->project().fileIdentity());
            if (then)
                then();
        });
}

void ProjectFiles::tellOfFailure(const QString& file, const std::exception_ptr& failure,
                                 Then then) {
    try {
        std::rethrow_exception(failure);
    } catch (const core::FileChangedError&) {
        if (mayOverwrite())
            write(file, std::nullopt, std::move(then));
    } catch (...) {
        notices_->showNotice(NoticeBar::Kind::error, messageOf(failure));
    }
}

void ProjectFiles::whenSafe(Then then) {
    if (session_->isBusy())
        return;
    if (!session_->isModified()) {
        then();
        return;
    }
    switch (dialogs_->askUnsaved(window_, name())) {
    case Dialogs::Unsaved::save:
        save(std::move(then));
        break;
    case Dialogs::Unsaved::discard:
        then();
        break;
    case Dialogs::Unsaved::cancel:
        break;
    }
}

void ProjectFiles::setFile(const QString& file, const std::optional<core::FileIdentity>& known) {
    file_ = file.isEmpty() ? QString() : QFileInfo(file).absoluteFilePath();
    watch_.watch(pathOf(file_), known);
    if (!file_.isEmpty())
        settings::addRecentProject(file_);
    emit fileChanged();
}

void ProjectFiles::tellOfChange() {
    notices_->showNotice(NoticeBar::Kind::question,
                         translated(kContext, "“{}” was changed by another program.", {name()}));
    notices_->addChoice(
        translated(kContext, "Read It Again"),
        [this] { session_->whenCommitted([this] { readAgain(); }); }, NoticeBar::AfterChoice::stay);
}

// The notice stays until the file is read, or written.
void ProjectFiles::readAgain() {
    const auto read = [this, file = file_] { load(file, file, false, {}); };
    if (!session_->isModified()) {
        read();
        return;
    }
    const Dialogs::Choice question{
        .title = translated(kContext, "Read It Again"),
        .text = translated(kContext,
                           "The project has changes that were not saved, and “{}” was changed by "
                           "another program. Reading it again discards your changes, unless you "
                           "save them as another file first.",
                           {name()}),
        .answers = {translated(kContext, "Discard and Read"), translated(kContext, "Save As…"),
                    translated(kContext, "Cancel")},
        .byDefault = 2,
        .onEscape = 2};
    switch (dialogs_->choose(window_, question)) {
    case 0:
        read();
        break;
    case 1:
        saveAs(read);
        break;
    default:
        break;
    }
}

} // namespace corvane::workbench::gui
