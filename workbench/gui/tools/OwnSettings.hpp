#pragma once

#include <QSettings>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace corvane::workbench::gui {

/// Settings and folders of a program's own, gone with it: what it does neither depends on what the
/// user has chosen nor changes it. Must stand before the Application.
class OwnSettings {
public:
    OwnSettings() {
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, home_.path());
    }

    /// The path of a file or folder that goes with this.
    [[nodiscard]] QString path(const char* name) const {
        return home_.filePath(QString::fromLatin1(name));
    }

private:
    QTemporaryDir home_;
};

} // namespace corvane::workbench::gui
