#pragma once

#include <QApplication>

namespace corvane::workbench::gui {

/// The program around its window: what it is called, where it keeps what it remembers, how it
/// looks.
class Application : public QApplication {
    Q_OBJECT

public:
    Application(int& argc, char** argv);

    /// Where unsaved work is kept.
    [[nodiscard]] static QString recoveryFolder();
};

} // namespace corvane::workbench::gui
