#include "workbench/gui/session/Settings.hpp"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>

namespace corvane::workbench::gui::settings {

namespace {

QString recentKey() { return QStringLiteral("recentProjects"); }
QString themeKey() { return QStringLiteral("theme"); }
QString summariesKey() { return QStringLiteral("summariesInTree"); }
QString columnsKey(const QString& kind) { return QStringLiteral("columns/") + kind; }
QString editorKey() { return QStringLiteral("editorCommand"); }
QString layoutKey(const QString& piece) { return QStringLiteral("layout/") + piece; }

} // namespace

QStringList recentProjects() { return QSettings().value(recentKey()).toStringList(); }

void addRecentProject(const QString& file) {
    const auto path = QFileInfo(file).absoluteFilePath();
    auto recent = recentProjects();
    recent.removeAll(path);
    recent.prepend(path);
    QSettings().setValue(recentKey(), QStringList(recent.mid(0, kMaxRecentProjects)));
}

void forgetRecentProject(const QString& file) {
    auto recent = recentProjects();
    recent.removeAll(QFileInfo(file).absoluteFilePath());
    QSettings().setValue(recentKey(), recent);
}

Theme theme() {
    const int stored = QSettings().value(themeKey()).toInt();
    return static_cast<Theme>(std::clamp(stored, 0, static_cast<int>(Theme::dark)));
}

void setTheme(Theme theme) { QSettings().setValue(themeKey(), static_cast<int>(theme)); }

bool summariesShown() { return QSettings().value(summariesKey(), true).toBool(); }

void setSummariesShown(bool shown) { QSettings().setValue(summariesKey(), shown); }

QStringList columns(const QString& kind) {
    return QSettings().value(columnsKey(kind)).toStringList();
}

void setColumns(const QString& kind, const QStringList& columns) {
    QSettings().setValue(columnsKey(kind), columns);
}

QString editorCommand() { return QSettings().value(editorKey()).toString().trimmed(); }

void setEditorCommand(const QString& command) {
    QSettings().setValue(editorKey(), command.trimmed());
}

QByteArray layout(const QString& piece) {
    return QSettings().value(layoutKey(piece)).toByteArray();
}

void setLayout(const QString& piece, const QByteArray& state) {
    QSettings().setValue(layoutKey(piece), state);
}

} // namespace corvane::workbench::gui::settings
