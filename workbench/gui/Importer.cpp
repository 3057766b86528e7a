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
        importInto(target, file, false);
}

void Importer::importFile(const QString& file, model::Element* preferred) {
    if (session_->isBusy())
        return;
    const auto extension = extensionOf(file);
    for (auto* element = preferred; element != nullptr; element = element->parentElement())
        if (canImport(*element, extension)) {
            importInto(*element, file, false);
            return;
        }
    if (core::importTargets(session_->project(), extension).empty()) {
        if (auto* const target = newTarget(extension))
            importInto(*target, file, true);
    } else if (auto* const target = chooseTarget(extension)) {
        importInto(*target, file, false);
    }
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

// Only an element can say whether it imports such files, so one of each class is tried.
model::Element* Importer::newTarget(const std::string& extension) {
    for (const auto& skill : session_->plugins().skills())
        for (const auto& entry : skill.classes) {
            if (!entry.topLevel)
                continue;
            auto* const element = session_->add(session_->root(), entry);
            if (element == nullptr)
                continue;
            if (canImport(*element, extension))
                return element;
            session_->undo();
        }
    notices_->showNotice(NoticeBar::Kind::error,
                         translated(kContext, "No loaded plug-in imports “{}” files.",
                                    {toQt(std::string_view(extension))}));
    return nullptr;
}

void Importer::importInto(model::Element& target, const QString& file, bool targetIsNew) {
    auto form = std::make_shared<core::OpenForm>(target);
    auto* const button = form->importButton(extensionOf(file));
    if (button == nullptr) {
        fail(translated(kContext, "{} does not import such files.",
                        {toQt(std::string_view(target.path()))}),
             targetIsNew);
        return;
    }
    using Answer = std::expected<ui::ImportedDocument, std::u16string>;
    auto answer = std::make_shared<std::optional<Answer>>();
    session_->runner().run(
        translated(kContext, "Importing {}", {QFileInfo(file).fileName()}),
        [form = std::move(form), button, answer, path = std::filesystem::path(toUtf8(file))] {
            *answer = button->press(path);
        },
        [this, &target, file, answer, targetIsNew](const std::exception_ptr& failure) {
            if (failure)
                fail(messageOf(failure), targetIsNew);
            else if (!**answer)
                fail(toQt((*answer)->error()), targetIsNew);
            else
                merge(target, file, std::move((**answer)->text), totalBytes(***answer),
                      targetIsNew);
        });
}

void Importer::merge(model::Element& target, const QString& file, std::string document,
                     std::size_t bytes, bool targetIsNew) {
    session_->import(
        target, std::move(document),
        [this, &target, file, bytes, targetIsNew](const ProjectSession::ImportResult& result) {
            if (!result) {
                fail(result.error(), targetIsNew);
                return;
            }
            notices_->showNotice(
                NoticeBar::Kind::information,
                translated(
                    kContext,
                    "Imported {} into {}: {} elements added, {} updated; {} bytes of memory.",
                    {QFileInfo(file).fileName(), toQt(std::string_view(target.path())),
                     formatted(result->added), formatted(result->replaced), formatted(bytes)}));
            emit imported(result->top);
        });
}

void Importer::fail(const QString& reason, bool targetIsNew) {
    if (targetIsNew)
        session_->undo();
    notices_->showNotice(NoticeBar::Kind::error, reason);
}

} // namespace corvane::workbench::gui
