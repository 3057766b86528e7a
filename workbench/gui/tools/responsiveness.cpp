// Measures how long the window does not answer while it works on a project:
// corvane-responsiveness PROJECT TEXT, where TEXT is typed into the filters. Prints, step by step,
// how long it took and the longest time between two events.
#include "workbench/core/plugins/PluginFolders.hpp"
#include "workbench/gui/tools/OwnSettings.hpp"
#include "workbench/gui/window/Application.hpp"
#include "workbench/gui/window/MainWindow.hpp"
#include "workbench/gui/window/NativeDialogs.hpp"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTreeView>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace corvane::workbench::gui {

namespace {

class Stopwatch {
public:
    explicit Stopwatch(MainWindow& window) : window_(&window) {}

    /// Does a step and lets events run until it is done.
    void measure(const char* name, const std::function<void()>& act,
                 const std::function<bool()>& done) {
        QElapsedTimer all;
        QElapsedTimer turn;
        all.start();
        turn.start();
        act();
        qint64 longest = turn.restart();
        const qint64 first = longest;
        qint64 doneAt = -1;
        // Some turns more, for what a step leaves to be drawn.
        for (int rest = 20; rest > 0; rest -= doneAt >= 0 ? 1 : 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 5);
            longest = std::max(longest, turn.restart());
            if (doneAt < 0 && !window_->session().isBusy() && done())
                doneAt = all.elapsed();
        }
        std::printf("%-28s done after %6lld ms, longest pause %4lld ms (the call itself %lld ms)\n",
                    name, static_cast<long long>(doneAt), static_cast<long long>(longest),
                    static_cast<long long>(first));
        std::fflush(stdout);
    }

private:
    MainWindow* window_;
};

void trigger(const MainWindow& window, Command command) {
    const auto* const name = kCommands[static_cast<std::size_t>(command)].name;
    window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
}

void useTree(Stopwatch& watch, MainWindow& window, const QString& file, const QString& text) {
    auto& tree = *window.findChild<QTreeView*>(QStringLiteral("projectTree"));
    auto& filter = *window.findChild<QLineEdit*>(QStringLiteral("treeFilter"));
    const auto* const model = window.findChild<TreeModel*>();
    const auto always = [] { return true; };
    watch.measure(
        "open", [&] { window.openFiles({file}); }, [&] { return tree.model()->rowCount() > 0; });
    watch.measure(
        "open every first branch",
        [&] {
            for (auto at = tree.model()->index(0, 0); at.isValid();
                 at = tree.model()->index(0, 0, at))
                tree.expand(at);
        },
        always);
    watch.measure(
        "show a form",
        [&] {
            auto last = tree.model()->index(0, 0);
            while (tree.model()->rowCount(last) > 0)
                last = tree.model()->index(tree.model()->rowCount(last) - 1, 0, last);
            tree.setCurrentIndex(last);
        },
        always);
    watch.measure(
        "filter the tree", [&] { QTest::keyClicks(&filter, text); },
        [&] { return model->isFiltered(); });
    watch.measure(
        "take the filter away", [&] { filter.clear(); }, [&] { return !model->isFiltered(); });
}

void useTable(Stopwatch& watch, MainWindow& window, const QString& text) {
    auto& table = *window.findChild<QTableView*>(QStringLiteral("elementTable"));
    auto& filter = *window.findChild<QLineEdit*>(QStringLiteral("tableFilter"));
    watch.measure(
        "show everything as a table",
        [&] {
            window.findChild<TreePanel*>()->select(*window.session().root().childElements()[0]);
            trigger(window, Command::showTable);
        },
        [&] { return table.model()->rowCount() > 0; });

    const auto* const model = window.findChild<TableModel*>();
    bool settled = false;
    const QObject listening; // no longer than this function
    QObject::connect(model, &TableModel::settled, &listening, [&] { settled = true; });
    const auto isSettled = [&] { return settled; };
    const auto sortBy = [&](int column) {
        settled = false;
        table.sortByColumn(column, Qt::DescendingOrder);
    };
    watch.measure("sort by name", [&] { sortBy(0); }, isSettled);
    watch.measure("sort by a field", [&] { sortBy(4); }, isSettled);
    watch.measure(
        "filter the table",
        [&] {
            settled = false;
            QTest::keyClicks(&filter, text);
        },
        isSettled);
    watch.measure("scroll to the end", [&] { table.scrollToBottom(); }, [] { return true; });
    watch.measure(
        "take the filter away",
        [&] {
            settled = false;
            filter.clear();
            table.sortByColumn(-1, Qt::AscendingOrder);
        },
        isSettled);
}

void changeAll(Stopwatch& watch, MainWindow& window) {
    auto& table = *window.findChild<QTableView*>(QStringLiteral("elementTable"));
    const auto always = [] { return true; };
    watch.measure(
        "select all rows", [&] { QTest::keyClick(&table, Qt::Key_A, Qt::ControlModifier); },
        always);
    watch.measure(
        "offer to change them", [&] { trigger(window, Command::changeSelected); }, always);
    auto& which = *window.findChild<QComboBox*>(QStringLiteral("bulkField"));
    watch.measure(
        "choose the last field", [&] { which.setCurrentIndex(which.count() - 1); }, always);
    auto* const bar = window.findChild<BulkEditBar*>();
    const auto choices = bar->findChildren<QComboBox*>();
    QTest::keyClick(choices.last(), Qt::Key_End);
    watch.measure(
        "change them",
        [&] { window.findChild<QPushButton*>(QStringLiteral("bulkApply"))->click(); }, always);
    watch.measure("undo the change", [&] { trigger(window, Command::undo); }, always);
    watch.measure(
        "remove them", [&] { trigger(window, Command::remove); },
        [&] { return table.model()->rowCount() == 0; });
    watch.measure(
        "undo the removal", [&] { trigger(window, Command::undo); },
        [&] { return table.model()->rowCount() != 0; });
}

} // namespace

} // namespace corvane::workbench::gui

int main(int argc, char** argv) {
    using namespace corvane::workbench::gui;
    const OwnSettings settings;
    const Application application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 3) {
        std::fprintf(stderr, "usage: corvane-responsiveness PROJECT TEXT\n");
        return 2;
    }
    corvane::workbench::core::PluginHost plugins;
    corvane::workbench::core::loadPlugins(plugins, {});
    NativeDialogs dialogs;
    MainWindow window(plugins, dialogs, settings.path("recovery"));
    window.show();
    Stopwatch watch(window);
    useTree(watch, window, arguments[1], arguments[2]);
    useTable(watch, window, arguments[2]);
    changeAll(watch, window);
    return 0;
}
