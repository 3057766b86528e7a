#include "workbench/gui/session/TextEditor.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QRegularExpression>
#include <QUrl>

namespace corvane::workbench::gui {

namespace {

constexpr std::string_view kContext = "corvane::workbench::gui::TextEditor";

constexpr QLatin1String kFile("{file}");

// In one pass: what a file is called is not looked through for placeholders.
QString filled(const QString& word, const TextPlace& place) {
    static const QRegularExpression kPlaceholder(QStringLiteral("\\{(file|line|column)\\}"));
    const auto valueOf = [&](const QString& name) {
        if (name == QLatin1String("file"))
            return place.file;
        return QString::number(name == QLatin1String("line") ? place.line : place.column);
    };
    QString text;
    qsizetype end = 0;
    for (auto matches = kPlaceholder.globalMatch(word); matches.hasNext();) {
        const auto match = matches.next();
        text += word.mid(end, match.capturedStart() - end);
        text += valueOf(match.captured(1));
        end = match.capturedEnd();
    }
    return text + word.mid(end);
}

} // namespace

QStringList editorCall(const QString& command, const TextPlace& place) {
    auto words = QProcess::splitCommand(command);
    for (auto& word : words)
        word = filled(word, place);
    return words;
}

QString objectionTo(const QString& command) {
    const auto words = QProcess::splitCommand(command);
    if (words.isEmpty())
        return {};
    if (words.front().isEmpty() || words.front().contains(kFile))
        return translated(kContext, "The command does not begin with a program.");
    if (!command.contains(kFile))
        return translated(kContext, "The command does not say where the file belongs: {}.",
                          {QString(kFile)});
    return {};
}

bool openInEditor(const TextPlace& place) {
    const auto file = QFileInfo(place.file).absoluteFilePath();
    auto words = editorCall(settings::editorCommand(), {file, place.line, place.column});
    if (words.isEmpty())
        return QDesktopServices::openUrl(QUrl::fromLocalFile(file));
    const auto program = words.takeFirst();
    return QProcess::startDetached(program, words);
}

} // namespace corvane::workbench::gui
