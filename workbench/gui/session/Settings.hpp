#pragma once

#include "workbench/gui/look/Theme.hpp"

#include <QByteArray>
#include <QStringList>

/// What the program remembers of one user from one start to the next.
namespace corvane::workbench::gui::settings {

inline constexpr qsizetype kMaxRecentProjects = 10;

/// The projects that were opened or saved last, the latest first.
[[nodiscard]] QStringList recentProjects();
void addRecentProject(const QString& file);
void forgetRecentProject(const QString& file);

[[nodiscard]] Theme theme();
void setTheme(Theme theme);

/// Whether the tree shows data types and addresses beside the names.
[[nodiscard]] bool summariesShown();
void setSummariesShown(bool shown);

/// The columns of the table for elements of a kind, as the table writes them; empty if none were
/// kept.
[[nodiscard]] QStringList columns(const QString& kind);
void setColumns(const QString& kind, const QStringList& columns);

/// The command that opens a text file in the user's editor (see TextEditor.hpp); empty for none.
[[nodiscard]] QString editorCommand();
void setEditorCommand(const QString& command);

/// A piece of the window's layout, as Qt packs it; empty if none was kept.
[[nodiscard]] QByteArray layout(const QString& piece);
void setLayout(const QString& piece, const QByteArray& state);

} // namespace corvane::workbench::gui::settings
