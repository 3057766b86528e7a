#include "workbench/gui/session/Importer.hpp"

#include "workbench/core/import/ProjectImport.hpp"
#include "workbench/core/import/SourceLine.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/TextWindow.hpp"
#include "workbench/gui/session/TextEditor.hpp"

#include <QFileInfo>

#include <memory>
#include <optional>
#include <utility>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::Importer";
constexpr std::size_t kShownColumns = 120; // of a line at fault

QString summaryOf(const core::ImportCounts& counts, bool targetIsNew) {
    const auto added = counts.added + (targetIsNew ? 1 : 0);
    auto changes = translated(kContext, "{}, {} updated",
                              {counted(kContext, "1 element added", "{} elements added", added),
                               formatted(counts.changed)});
    const auto further = [&](std::size_t count, std::string_view text) {
        if (count != 0)
            changes += translated(kContext, text, {formatted(count)});
    };
    further(counts.moved, ", {} moved");
    further(counts.renamed, ", {} renamed");
    further(counts.removed, ", {} removed");
    return changes;
}

// What the plug-in says of the file, then what the merge says of the project.
QStringList linesOf(const QString& file, const std::vector<ui::ImportWarning>& ofFile,
                    const std::vector<core::MergeWarning>& ofProject) {
    const auto name = toUtf8(QFileInfo(file).fileName());
    QStringList lines;
    for (const auto& warning : ofFile)
        lines += toQt(core::textOf(warning, name));
    for (const auto& warning : ofProject)
        lines += toQt(core::textOf(warning));
    return lines;
}

std::size_t totalBytes(const std::vector<ui::MemoryUse>& memory) {
    std::size_t sum = 0;
    for (const auto& piece : memory)
        sum += piece.bytes;
    return sum;
}

} // namespace

/// The button that reads a file, with all that is there for its sake. It goes with the job that
/// presses the button: the window holds nothing of it.
struct Importer::Source {
    std::unique_ptr<core::Project> aside; // where the element stands, unless in the user's project
    std::unique_ptr<core::OpenForm> form;
    ui::PushButton* button;
};

std::string extensionOf(const QString& file) { return core::importExtensionOf(toUtf8(file)); }

Importer::Importer(ProjectSession& session, Dialogs& dialogs, NoticeBar& notices, QWidget& window)
    : QObject(&window),
      session_(&session),
      dialogs_(&dialogs),
      notices_(&notices),
      window_(&window) {
    connect(session_, &ProjectSession::projectDropped, this, [this] { draft_.reset(); });
}

void Importer::chooseAndImport(model::Element& target, const QString& key) {
    if (session_->isBusy() || isAsking())
        return;
    const auto pressed = [key = toUtf8(key)](const core::OpenForm& form) {
        return form.button(key);
    };
    QString title;
    QString extension;
    if (const core::OpenForm form(target); const auto* const button = pressed(form)) {
        title = toQt(button->texts().label);
        extension = toQt(std::string_view(button->extension()));
    }
    const auto file = dialogs_->chooseFileToImport(window_, title, extension);
    if (!file.isEmpty())
        importInto(target, file, pressed);
}

void Importer::importFile(const QString& file, model::Element* preferred) {
    if (session_->isBusy() || isAsking())
        return;
    const auto extension = extensionOf(file);
    for (auto* element = preferred; element != nullptr; element = element->parentElement())
        if (core::canImport(*element, extension)) {
            importInto(*element, file);
            return;
        }
    if (core::importTargets(session_->project(), extension).empty())
        importIntoNew(file, extension);
    else if (auto* const target = chooseTarget(extension))
        importInto(*target, file);
}

model::Element* Importer::chooseTarget(const std::string& extension) {
    const auto targets = core::importTargets(session_->project(), extension);
    if (targets.size() == 1)
        return targets.front();
    QStringList paths;
    for (const auto* const target : targets)
        paths += toQt(target->path());
    const auto chosen = dialogs_->chooseOne(window_, translated(kContext, "Import"),
                                            translated(kContext, "Import into:"), paths);
    const auto found = paths.indexOf(chosen);
    return found < 0 ? nullptr : targets[static_cast<std::size_t>(found)];
}

// Only an element can read the file. One in a project aside does, so that a file that cannot be
// read leaves neither an element nor a step of history.
void Importer::importIntoNew(const QString& file, const std::string& extension) {
    auto aside = std::make_unique<core::Project>(session_->plugins());
    auto* const reader = core::addImportTarget(*aside, extension);
    if (reader == nullptr) {
        fail(translated(kContext, "No loaded plug-in imports “{}” files.",
                        {toQt(std::string_view(extension))}));
        return;
    }
    auto form = std::make_unique<core::OpenForm>(*reader);
    auto* const button = form->importButton(extension);
    const auto& newClass = session_->plugins().entryOf(reader->elementClass());
    read({std::move(aside), std::move(form), button}, file,
         [this, &newClass, file](ui::ImportedDocument document) {
             if (auto* const target = session_->add(session_->root(), newClass))
                 importFirst(*target, file, std::move(document), true);
         });
}

void Importer::importInto(model::Element& target, const QString& file) {
    importInto(target, file, buttonFor(file));
}

Importer::ButtonOf Importer::buttonFor(const QString& file) {
    return [extension = extensionOf(file)](const core::OpenForm& form) {
        return form.importButton(extension);
    };
}

void Importer::importInto(model::Element& target, const QString& file, const ButtonOf& buttonOf,
                          bool inAnyCase) {
    auto form = std::make_unique<core::OpenForm>(target);
    auto* const button = buttonOf(*form);
    if (button == nullptr) {
        fail(translated(kContext, "{} does not import such files.",
                        {toQt(std::string_view(target.path()))}));
        return;
    }
    read({nullptr, std::move(form), button}, file,
         [this, &target, file, inAnyCase](ui::ImportedDocument document) {
             if (target.childElements().empty())
                 importFirst(target, file, std::move(document), false);
             else
                 review(target, file, std::move(document), inAnyCase);
         });
}

void Importer::read(Source source, const QString& file, Then then) {
    using Answer = std::expected<ui::ImportedDocument, ui::ImportFailure>;
    auto answer = std::make_shared<std::optional<Answer>>();
    session_->runner().run(
        translated(kContext, "Importing {}", {QFileInfo(file).fileName()}),
        [source = std::move(source), answer, path = std::filesystem::path(toUtf8(file))] {
            *answer = source.button->press(path);
        },
        [this, file, answer, then = std::move(then)](const std::exception_ptr& failure) mutable {
            if (failure)
                fail(messageOf(failure));
            else if (!**answer)
                fail(file, (*answer)->error());
            else
                then(std::move(***answer));
        });
}

void Importer::importFirst(model::Element& target, const QString& file,
                           ui::ImportedDocument document, bool targetIsNew) {
    carryOut(ImportDraft(*session_, target, file, std::move(document)), targetIsNew);
}

void Importer::review(model::Element& target, const QString& file, ui::ImportedDocument document,
                      bool inAnyCase) {
    draft_ = std::make_shared<ImportDraft>(*session_, target, file, std::move(document));
    connectDraft(inAnyCase);
    draft_->compare();
}

// Once the user is asked, what the draft finds out is for who asks.
void Importer::connectDraft(bool inAnyCase) {
    auto* const draft = draft_.get();
    auto* const first = new QObject(draft); // goes with the first answer
    connect(draft, &ImportDraft::compared, first, [this, first, inAnyCase] {
        first->deleteLater();
        first->disconnect();
        takePreview(inAnyCase);
    });
    connect(draft, &ImportDraft::failed, first, [this](const QString& reason, bool stopped) {
        const auto ended = endReview();
        if (stopped)
            notices_->showNotice(NoticeBar::Kind::information, reason);
        else
            fail(reason);
        emit answered();
    });
    connect(draft, &ImportDraft::confirmed, this, [this] {
        carryOut(*endReview(), false);
        emit answered();
    });
    connect(draft, &ImportDraft::cancelled, this, [this] {
        const auto ended = endReview();
        emit answered();
    });
}

void Importer::takePreview(bool inAnyCase) {
    if (inAnyCase || !draft_->preview()->counts.isNothing()) {
        emit reviewWanted(draft_);
        return;
    }
    const auto ended = endReview();
    ended->drop();
    tellNothingChanges(*ended);
    emit answered();
}

std::shared_ptr<ImportDraft> Importer::endReview() { return std::exchange(draft_, nullptr); }

// What is missing from the file, or goes by a name that misleads, the user may want to change all
// the same: the file is read again then, since much may have happened meanwhile.
void Importer::tellNothingChanges(const ImportDraft& draft) {
    const auto& preview = *draft.preview();
    const auto path = toQt(std::string_view(draft.target().path()));
    auto text =
        translated(kContext, "{} changes nothing in {}: {} unchanged",
                   {QFileInfo(draft.file()).fileName(), path, formatted(preview.counts.unchanged)});
    if (preview.counts.missing != 0)
        text +=
            translated(kContext, ", {} no longer in the file", {formatted(preview.counts.missing)});
    tell(text + QLatin1Char('.'), linesOf(draft.file(), draft.warnings(), preview.warnings));
    if (preview.counts.missing == 0 && preview.warnings.empty())
        return;
    notices_->addChoice(translated(kContext, "Look Closer"),
                        [this, path = toUtf8(path), file = draft.file()] {
                            auto* const target = session_->project().model().findElement(path);
                            if (target != nullptr && !session_->isBusy() && !isAsking())
                                importInto(*target, file, buttonFor(file), true);
                        });
}

void Importer::carryOut(const ImportDraft& draft, bool targetIsNew) {
    session_->import(
        draft.target(), draft.plan(),
        [this, &target = draft.target(), file = draft.file(), bytes = totalBytes(draft.memory()),
         targetIsNew, warnings = draft.warnings()](const ProjectSession::ImportResult& result) {
            if (!result) {
                if (targetIsNew)
                    session_->undo();
                fail(result.error());
                return;
            }
            tell(translated(kContext, "Imported {} into {}: {}; {}.",
                            {QFileInfo(file).fileName(), toQt(std::string_view(target.path())),
                             summaryOf(result->counts, targetIsNew),
                             counted(kContext, "1 byte of memory", "{} bytes of memory", bytes)}),
                 linesOf(file, warnings, result->warnings));
            emit imported(result->top);
        });
}

void Importer::tell(const QString& summary, const QStringList& lines) {
    if (lines.isEmpty()) {
        notices_->showNotice(NoticeBar::Kind::information, summary);
        return;
    }
    const auto count =
        counted(kContext, "1 warning", "{} warnings", static_cast<std::size_t>(lines.size()));
    if (lines.size() == 1) {
        notices_->showNotice(NoticeBar::Kind::warning,
                             translated(kContext, "{} {}: {}", {summary, count, lines.front()}));
        return;
    }
    notices_->showNotice(NoticeBar::Kind::warning, translated(kContext, "{} {}, the first: {}",
                                                              {summary, count, lines.front()}));
    notices_->addChoice(translated(kContext, "Show all"),
                        [this, count, text = lines.join(QLatin1Char('\n'))] {
                            showTextWindow(*window_, count, text);
                        });
}

void Importer::fail(const QString& file, const ui::ImportFailure& failure) {
    auto reason = toQt(failure.text);
    if (failure.hint)
        reason += QLatin1Char('\n') + toQt(*failure.hint);
    fail(reason);
    if (!failure.line || !failure.column)
        return;
    auto place = translated(kContext, "{}, line {}, column {}",
                            {QFileInfo(file).fileName(), QString::number(*failure.line),
                             QString::number(*failure.column)});
    auto text = place;
    if (const auto source =
            core::sourceLine(toUtf8(file), *failure.line, *failure.column, kShownColumns))
        text +=
            QStringLiteral("\n\n%1\n%2\n")
                .arg(toQt(std::string_view(source->text)), toQt(std::string_view(source->caret)));
    notices_->addChoice(
        translated(kContext, "Show Place"),
        [this, place = std::move(place), text = std::move(text)] {
            showTextWindow(*window_, place, text, TextKind::source);
        },
        NoticeBar::AfterChoice::stay);
    notices_->addChoice(
        translated(kContext, "Open in Editor"),
        [this, at = TextPlace{file, *failure.line, *failure.column}] {
            if (!openInEditor(at))
                showTextWindow(*window_, translated(kContext, "Open in Editor"),
                               translated(kContext,
                                          "No program could be started to open {}. "
                                          "Edit > Text Editor… says which one it is.",
                                          {at.file}));
        },
        NoticeBar::AfterChoice::stay);
}

void Importer::fail(const QString& reason) { notices_->showNotice(NoticeBar::Kind::error, reason); }

} // namespace corvane::workbench::gui
