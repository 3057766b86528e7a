#include "workbench/core/plugins/PluginFolders.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/window/Application.hpp"
#include "workbench/gui/window/MainWindow.hpp"
#include "workbench/gui/window/NativeDialogs.hpp"

#include <QCommandLineParser>

#include <vector>

namespace {

using namespace corvane::workbench::gui;

constexpr std::string_view kContext = "corvane::workbench::gui::Application";

struct Request {
    std::vector<std::filesystem::path> plugins;
    QStringList files;
};

Request parseCommandLine(const QCoreApplication& application) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        translated(kContext, "Configures industrial automation projects in a window."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption plugin(QStringLiteral("plugin"),
                                    translated(kContext, "Loads this plug-in, too."),
                                    QStringLiteral("FILE"));
    parser.addOption(plugin);
    parser.addPositionalArgument(
        QStringLiteral("FILE"),
        translated(kContext, "A project to open, or a file to import into a new element."),
        QStringLiteral("[FILE...]"));
    parser.process(application);
    Request request;
    for (const auto& file : parser.values(plugin))
        request.plugins.emplace_back(toUtf8(file));
    request.files = parser.positionalArguments();
    return request;
}

} // namespace

int main(int argc, char** argv) {
    const Application application(argc, argv);
    const auto request = parseCommandLine(application);
    corvane::workbench::core::PluginHost plugins;
    corvane::workbench::core::loadPlugins(plugins, request.plugins);
    NativeDialogs dialogs;
    MainWindow window(plugins, dialogs, Application::recoveryFolder());
    window.tellOfFailures(plugins);
    window.show();
    window.offerRecovery();
    window.openFiles(request.files);
    return Application::exec();
}
