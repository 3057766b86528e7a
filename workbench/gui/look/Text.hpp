#pragma once

#include <QDateTime>
#include <QString>

#include <exception>
#include <initializer_list>
#include <string>
#include <string_view>

/// Texts between the platform, which keeps them in UTF-8 and UTF-16, and Qt.
namespace corvane::workbench::gui {

[[nodiscard]] QString toQt(std::string_view utf8);
[[nodiscard]] QString toQt(std::u16string_view utf16);
[[nodiscard]] std::string toUtf8(const QString& text);
[[nodiscard]] std::u16string toUtf16(const QString& text);

/// What the user reads for an English text of the window; `context` is the name of the class that
/// shows it. Placeholders "{}" are replaced by the arguments, one after the other.
[[nodiscard]] QString translated(std::string_view context, std::string_view english,
                                 std::initializer_list<QString> arguments = {});

/// A number in the user's way of writing them.
[[nodiscard]] QString formatted(std::size_t number);

/// A day and a time of it, as the user writes them.
[[nodiscard]] QString formatted(const QDateTime& time);

/// A text that counts something: `one` for a single one, else `many`, whose "{}" is the number.
[[nodiscard]] QString counted(std::string_view context, std::string_view one, std::string_view many,
                              std::size_t number);

/// A file for a list of files: its name, and behind it the folder that it is in, "~" for the
/// user's own.
[[nodiscard]] QString nameAndFolder(const QString& file);

/// What a failure says of itself.
[[nodiscard]] QString messageOf(const std::exception_ptr& failure);

} // namespace corvane::workbench::gui
