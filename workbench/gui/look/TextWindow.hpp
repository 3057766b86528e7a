#pragma once

#include <QString>

#include <cstdint>

class QWidget;

namespace corvane::workbench::gui {

/// Prose is broken into lines that fit. Lines of a source stay as they are, and their characters
/// stand below each other.
enum class TextKind : std::uint8_t { prose, source };

/// Shows a text of as many lines as it has, to be read and copied, in a window of its own that goes
/// when the user closes it, and at the latest with `owner`. The owner stays usable meanwhile.
void showTextWindow(QWidget& owner, const QString& title, const QString& text,
                    TextKind kind = TextKind::prose);

} // namespace corvane::workbench::gui
