#pragma once

#include <QString>

class QWidget;

namespace corvane::workbench::gui {

/// Shows a text of as many lines as it has, to be read and copied, in a window of its own that goes
/// when the user closes it, and at the latest with `owner`. The owner stays usable meanwhile.
void showTextWindow(QWidget& owner, const QString& title, const QString& text);

} // namespace corvane::workbench::gui
