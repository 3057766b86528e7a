#include "workbench/gui/window/Application.hpp"

#include "workbench/gui/look/Theme.hpp"
#include "workbench/gui/session/Settings.hpp"

#include <QDir>
#include <QStandardPaths>

// A static library's resources are linked only where something asks for them; the macro does not
// work inside a namespace.
static void addPictures() { Q_INIT_RESOURCE(pictures); }

namespace corvane::workbench::gui {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    addPictures();
    setOrganizationName(QStringLiteral("corvane"));
    setApplicationName(QStringLiteral("corvane-workbench"));
    setApplicationVersion(QStringLiteral(CORVANE_VERSION));
    applyTheme(settings::theme());
}

QString Application::recoveryFolder() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation))
        .filePath(QStringLiteral("recovery"));
}

} // namespace corvane::workbench::gui
