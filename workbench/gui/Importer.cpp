#include "workbench/gui/Importer.hpp"

#include "workbench/core/OpenForm.hpp"
#include "workbench/gui/Text.hpp"

#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <optional>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::Importer";

bool canImport(model::Element& element, const std::string& extension) {
    return core::OpenForm(element).importButton(extension) != nullptr;
}

std::size_t totalBytes(const ui::ImportedDocument& document) {
    std::size_t sum = 0;
    for (const auto& piece : document.memory)
        sum += piece.bytes;
    return sum;
}

/// A form of an element outside the user's project.
struct Aside {
    explicit Aside(const core::PluginHost& plugins) : project(plugins) {}

    core::Project project;
    std::optional<core::OpenForm> form;
};

} // namespace

std::string extensionOf(const QString& file) {
    const auto suffix = QFileInfo(file).suffix().toLower();
    return suffix.isEmpty() ? std::string() : "." + toUtf8(suffix);
}

Importer::Importer(ProjectSession& session, Dialogs& dialogs, NoticeBar& notices, QWidget& window)
    : QObject(&window),
      session_(&session),
      dialogs_(&dialogs),
      notices_(&notices),
      window_(&window) {}

void Importer::chooseAndImport(model::Element& target, const QString& title,
                               const QString& extension) {
    if (session_->isBusy())
        return;
    const auto file = dialogs_->chooseFileToImport(window_, title, extension);
    if (!file.isEmpty())
        importInto(target, file);
}

void Importer::importFile(const QString& file, model::Element* preferred) {
    if (session_->isBusy())
        return;
    const auto extension = extensionOf(file);
    for (auto* element = preferred; element != nullptr; element = element->parentElement())
        if (canImport(*element, extension)) {
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
    auto aside = std::make_shared<Aside>(session_->plugins());
    auto* const reader = core::addImportTarget(aside->project, extension);
    if (reader == nullptr) {
        fail(translated(kContext, "No loaded plug-in imports “{}” files.",
                        {toQt(std::string_view(extension))}));
        return;
    }
    auto& button = *aside->form.emplace(*reader).importButton(extension);
    const auto& newClass = session_->plugins().entryOf(reader->elementClass());
    read(button, file, [this, aside, &newClass, file](ui::ImportedDocument document) {
        if (auto* const target = session_->add(session_->root(), newClass))
            merge(*target, file, std::move(document), true);
    });
}

void Importer::importInto(model::Element& target, const QString& file) {
    auto form = std::make_shared<core::OpenForm>(target);
    auto* const button = form->importButton(extensionOf(file));
    if (button == nullptr) {
        fail(translated(kContext, "{} does not import such files.",
                        {toQt(std::string_view(target.path()))}));
        return;
    }
    read(*button, file, [this, form, &target, file](ui::ImportedDocument document) {
        merge(target, file, std::move(document), false);
    });
}

// `then` keeps alive what the button belongs to.
void Importer::read(ui::PushButton& button, const QString& file, Then then) {
    using Answer = std::expected<ui::ImportedDocument, std::u16string>;
    auto answer = std::make_shared<std::optional<Answer>>();
    session_->runner().run(
        translated(kContext, "Importing {}", {QFileInfo(file).fileName()}),
        [&button, answer, path = std::filesystem::path(toUtf8(file))] {
            *answer = button.press(path);
        },
        [this, answer, then = std::move(then)](const std::exception_ptr& failure) {
            if (failure)
                fail(messageOf(failure));
            else if (!**answer)
                fail(toQt((*answer)->error()));
            else
                then(std::move(***answer));
        });
}

void Importer::merge(model::Element& target, const QString& file, ui::ImportedDocument document,
                     bool targetIsNew) {
    const auto bytes = totalBytes(document);
    session_->import(
        target, std::move(document.text),
        [this, &target, file, bytes, targetIsNew](const ProjectSession::ImportResult& result) {
            if (!result) {
                if (targetIsNew)
                    session_->undo();
                fail(result.error());
                return;
            }
            notices_->showNotice(
                NoticeBar::Kind::information,
                translated(
                    kContext, "Imported {} into {}: {}, {} updated; {}.",
                    {QFileInfo(file).fileName(), toQt(std::string_view(target.path())),
                     counted(kContext, "1 element added", "{} elements added", result->added),
                     formatted(result->replaced),
                     counted(kContext, "1 byte of memory", "{} bytes of memory", bytes)}));
            emit imported(result->top);
        });
}

void Importer::fail(const QString& reason) { notices_->showNotice(NoticeBar::Kind::error, reason); }

} // namespace corvane::workbench::gui
