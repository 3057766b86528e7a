#pragma once

#include <QString>

class QLabel;
class QWidget;

/// Names, labels and messages are a user's or a plug-in's: they are shown as they are, whatever
/// characters they hold. Widgets that take "&" for the mark of a key, or a tag for a format, are
/// given texts by way of these.
namespace corvane::workbench::gui {

/// A label that shows every text as it is.
[[nodiscard]] QLabel* plainLabel(QWidget* parent, const QString& text = {});

/// For buttons, menus, tabs and labels with a buddy, which would underline what follows an "&".
[[nodiscard]] QString withoutMnemonic(QString text);

/// For tooltips and "What's this" texts, which would format what looks like a tag.
[[nodiscard]] QString withoutFormat(const QString& text);

/// For window titles, in which "[*]" stands for the mark of unsaved changes.
[[nodiscard]] QString withoutModifiedMark(QString text);

} // namespace corvane::workbench::gui
