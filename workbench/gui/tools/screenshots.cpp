// Takes the pictures of the user guide from the running window: corvane-screenshots FOLDER FILE,
// where FILE is one that a plug-in imports. Whatever it shows, it reaches as a user would; it knows
// no element class by name.
#include "workbench/core/plugins/PluginFolders.hpp"
#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/look/Theme.hpp"
#include "workbench/gui/preview/ImportPreviewDialog.hpp"
#include "workbench/gui/session/Settings.hpp"
#include "workbench/gui/tools/OwnSettings.hpp"
#include "workbench/gui/window/Application.hpp"
#include "workbench/gui/window/MainWindow.hpp"

#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace corvane::workbench::gui {

namespace {

/// Nobody is there to be asked.
class NoDialogs final : public Dialogs {
public:
    QString chooseProjectToOpen(QWidget*) override { return {}; }
    QString chooseProjectToSave(QWidget*, const QString&) override { return {}; }
    QString chooseFileToImport(QWidget*, const QString&, const QString&) override { return {}; }
    Unsaved askUnsaved(QWidget*, const QString&) override { return Unsaved::discard; }
    bool confirm(QWidget*, const Question&) override { return true; }
    int choose(QWidget*, const Choice& question) override { return question.byDefault; }
    std::optional<QString> enterText(QWidget*, const Entry&) override { return std::nullopt; }
    QString chooseOne(QWidget*, const QString&, const QString&, const QStringList&) override {
        return {};
    }
};

class Tour {
public:
    Tour(MainWindow& window, QString folder) : window_(&window), folder_(std::move(folder)) {}

    void run(const QString& file) {
        take("start");
        window_->openFiles({file});
        settle();
        showForm();
        showImport(file);
        showError();
        showTable();
        showProblems();
        showDark();
    }

private:
    /// Lets everything that waits for its turn have it.
    void settle() const {
        QElapsedTimer quiet;
        quiet.start();
        while (quiet.elapsed() < 400)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }

    void take(const char* name) const { take(name, *window_); }

    void take(const char* name, QWidget& shown) const {
        settle();
        const auto path = QDir(folder_).filePath(QString::fromLatin1(name) + ".png");
        if (!shown.grab().save(path))
            std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    }

    [[nodiscard]] model::Element& target() const {
        return *window_->session().root().childElements().front();
    }

    /// The first elements below the imported ones that hold nothing themselves.
    [[nodiscard]] std::vector<model::Element*> leaves() const {
        std::vector<model::Element*> found;
        for (const auto& group : target().childElements())
            for (const auto& element : group->childElements())
                if (element->childElements().empty())
                    found.push_back(element.get());
        return found;
    }

    void select(model::Element& element) const {
        window_->findChild<TreePanel*>()->select(element);
        settle();
    }

    [[nodiscard]] QLineEdit* firstLine() const {
        for (auto* const line : window_->findChild<FormPanel*>()->findChildren<QLineEdit*>())
            if (line->isVisible() && !line->isReadOnly() &&
                qobject_cast<QAbstractSpinBox*>(line->parentWidget()) == nullptr)
                return line;
        return nullptr;
    }

    void trigger(Command command) const {
        const auto* const name = kCommands[static_cast<std::size_t>(command)].name;
        window_->findChild<QAction*>(QString::fromLatin1(name))->trigger();
    }

    void showForm() const {
        select(*leaves().at(3));
        trigger(Command::showForm);
        take("form");
    }

    /// The file again, with a variable in front and a block behind.
    void showImport(const QString& file) const {
        QFile source(file);
        const QTemporaryDir folder;
        QFile changed(folder.filePath(QFileInfo(file).fileName()));
        if (!source.open(QIODevice::ReadOnly) || !changed.open(QIODevice::WriteOnly))
            return;
        auto text = source.readAll();
        text.insert(text.indexOf("STRUCT") + 6, "\n      Pressure : Real;");
        const auto attributes = text.indexOf('{');
        changed.write(text + "DATA_BLOCK \"Labeller\"\n" +
                      text.mid(attributes, text.indexOf('}') - attributes + 1) +
                      "\nSTRUCT Ready : Bool; END_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
        changed.close();
        window_->openFiles({changed.fileName()});
        settle();
        auto* const preview = window_->findChild<ImportPreviewDialog*>();
        take("import", *preview);
        preview->reject();
        settle();
    }

    void showError() const {
        auto* const line = firstLine();
        line->setFocus();
        line->selectAll();
        QTest::keyClicks(line, QStringLiteral("QX1"));
        take("error");
        trigger(Command::undo);
    }

    void showTable() const {
        select(target());
        trigger(Command::showTable);
        settle();
        auto* const table = window_->findChild<QTableView*>(QStringLiteral("elementTable"));
        table->selectRow(3);
        table->selectionModel()->select(
            QItemSelection(table->model()->index(3, 0), table->model()->index(8, 0)),
            QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        settle();
        trigger(Command::changeSelected);
        auto* const which = window_->findChild<QComboBox*>(QStringLiteral("bulkField"));
        which->setCurrentIndex(which->count() - 1);
        take("table");
    }

    void showProblems() const {
        const auto elements = leaves();
        for (const std::size_t i : {1u, 4u, 6u}) {
            select(*elements.at(i));
            trigger(Command::showForm);
            auto* const line = firstLine();
            line->selectAll();
            QTest::keyClicks(line, i == 4 ? QStringLiteral("12.7") : QStringLiteral("MW4"));
            settle();
        }
        trigger(Command::nextProblem);
        settle();
        trigger(Command::nextProblem);
        take("problems");
    }

    void showDark() const {
        select(*leaves().at(2));
        trigger(Command::showForm);
        trigger(Command::themeDark);
        take("dark");
    }

    MainWindow* window_;
    QString folder_;
};

} // namespace

} // namespace corvane::workbench::gui

int main(int argc, char** argv) {
    using namespace corvane::workbench::gui;
    const OwnSettings settings;
    const Application application(argc, argv);
    const auto arguments = QCoreApplication::arguments();
    if (arguments.size() != 3 || !QDir().mkpath(arguments[1])) {
        std::fprintf(stderr, "usage: corvane-screenshots FOLDER FILE\n");
        return 2;
    }
    applyTheme(Theme::light);
    corvane::workbench::core::PluginHost plugins;
    corvane::workbench::core::loadPlugins(plugins, {});
    NoDialogs dialogs;
    MainWindow window(plugins, dialogs, settings.path("recovery"));
    window.resize(1180, 740);
    window.show();
    Tour(window, arguments[1]).run(arguments[2]);
    return 0;
}
