#include "workbench/gui/tools/OwnSettings.hpp"
#include "workbench/gui/window/Application.hpp"
#include "workbench/gui/window/MainWindow.hpp"
#include "workbench/gui/window/NativeDialogs.hpp"

#include <gtest/gtest.h>

#include <string_view>
#include <unistd.h>

namespace {

using namespace corvane::workbench;

// A program that keeps unsaved work in FOLDER and then comes to a sudden end.
[[noreturn]] void crash(const QString& folder) {
    core::PluginHost plugins;
    plugins.load(CORVANE_OWN_PLUGIN);
    gui::NativeDialogs dialogs;
    gui::MainWindow window(plugins, dialogs, folder);
    window.session().add(window.session().root(), *plugins.findClass("@Skill.S7.PLC"));
    window.recovery().keepNow();
    ::_exit(1);
}

} // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const gui::OwnSettings settings;
    testing::InitGoogleTest(&argc, argv);
    const gui::Application application(argc, argv);
    if (argc == 3 && std::string_view(argv[1]) == "--crash")
        crash(QString::fromLocal8Bit(argv[2]));
    return RUN_ALL_TESTS();
}
