#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

namespace corvane::workbench::gui {

/// A place in a text file, as editors count: from 1, a character is one column.
struct TextPlace {
    QString file;
    std::uint64_t line = 1;
    std::uint64_t column = 1;
};

/// What a user's command for an editor becomes for a place: the program, then its arguments. Blanks
/// separate them, but for those between double quotes; "{file}", "{line}" and "{column}" stand for
/// the place, each once filled in as it is. No shell has a hand in it.
[[nodiscard]] QStringList editorCall(const QString& command, const TextPlace& place);

/// Why nothing can be opened with a command, translated; empty for a good one, and for an empty
/// one, which leaves the choice to the system.
[[nodiscard]] QString objectionTo(const QString& command);

/// Opens a file in the user's editor: by the command of the settings, at its place, or where there
/// is none by whatever the system opens such files with. False where no program could be started.
[[nodiscard]] bool openInEditor(const TextPlace& place);

} // namespace corvane::workbench::gui
