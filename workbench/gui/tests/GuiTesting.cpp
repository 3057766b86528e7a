#include "GuiTesting.hpp"

#include "workbench/gui/look/Text.hpp"
#include "workbench/gui/session/Slicer.hpp"
#include "workbench/gui/table/TableOrder.hpp"

#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QProcess>
#include <QPushButton>
#include <QSettings>

#include <algorithm>

namespace corvane::workbench::gui {

namespace {

constexpr int kQuiet = 60; // milliseconds without anything under way
constexpr int kQuietTurns = 6;
constexpr int kPatience = 20'000; // milliseconds

} // namespace

GuiTest::GuiTest() {
    QSettings().clear();
    plugins_.load(CORVANE_OWN_PLUGIN);
    reopenWindow();
}

GuiTest::~GuiTest() { window_.reset(); }

void GuiTest::reopenWindow() {
    window_.reset();
    window_ = std::make_unique<MainWindow>(plugins_, dialogs_, path("recovery"));
    window_->show();
    window_->activateWindow();
    static_cast<void>(QTest::qWaitForWindowActive(window_.get()));
    settle();
}

void GuiTest::settle() {
    QElapsedTimer patience;
    QElapsedTimer quiet;
    patience.start();
    quiet.start();
    int turns = 0; // on a machine with other work, time alone says little
    while ((quiet.elapsed() < kQuiet || turns < kQuietTurns) && patience.elapsed() < kPatience) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        ++turns;
        if (isAtWork()) {
            quiet.restart();
            turns = 0;
        }
    }
}

bool GuiTest::isAtWork() {
    const auto orders = window().findChildren<TableOrder*>();
    const auto parts = window().findChildren<QObject*>();
    return session().isBusy() || std::ranges::any_of(orders, &TableOrder::isRunning) ||
           std::ranges::any_of(parts, [](const QObject* part) {
               const auto* const slicer = dynamic_cast<const Slicer*>(part);
               return slicer != nullptr && slicer->isRunning();
           });
}

bool GuiTest::settleUntil(const std::function<bool()>& condition) {
    // A condition may ask the project, which is a job's own while one runs.
    const auto holds = [&] { return !session().isBusy() && condition(); };
    QElapsedTimer patience;
    patience.start();
    while (!holds() && patience.elapsed() < kPatience)
        settle();
    return holds();
}

QString GuiTest::writeFile(const char* file, const QByteArray& content) const {
    QFile written(path(file));
    EXPECT_TRUE(written.open(QIODevice::WriteOnly));
    written.write(content);
    return written.fileName();
}

QByteArray GuiTest::readFile(const QString& file) {
    QFile read(file);
    EXPECT_TRUE(read.open(QIODevice::ReadOnly)) << file.toStdString();
    return read.readAll();
}

QByteArray GuiTest::largeProject() {
    QByteArray items;
    for (int i = 0; i != 30'000; ++i)
        items += QByteArray(i == 0 ? "" : ",") + R"({"@Skill.S7.Item":{"name":"i)" +
                 QByteArray::number(i) + R"(","address":"DB0"}})";
    return R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"P","children":[)"
           R"({"@Skill.S7.DataBlock":{"name":"B","DBNumber":3,"children":[)" +
           items + "]}}]}}]}";
}

QString GuiTest::example(const char* file) {
    return QStringLiteral(CORVANE_EXAMPLES "/") + QString::fromLatin1(file);
}

QByteArray GuiTest::runCommandLine(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(CORVANE_COMMAND_LINE), arguments);
    EXPECT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QByteArray GuiTest::dataBlock(const char* name, const QByteArray& declarations) {
    return QByteArray("DATA_BLOCK \"") + name + "\" { S7_Optimized_Access := 'FALSE' } STRUCT " +
           declarations + " END_STRUCT; BEGIN END_DATA_BLOCK\n";
}

QAction& GuiTest::action(Command command) {
    return child<QAction>(kCommands[static_cast<std::size_t>(command)].name);
}

void GuiTest::trigger(Command command) {
    EXPECT_TRUE(action(command).isEnabled()) << kCommands[static_cast<std::size_t>(command)].name;
    action(command).trigger();
    settle();
}

void GuiTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    settle();
}

void GuiTest::clickNotice(const char* button) {
    for (auto* const one : child<NoticeBar>().findChildren<QPushButton*>())
        if (one->text() == QLatin1String(button)) {
            QTest::mouseClick(one, Qt::LeftButton);
            settle();
            return;
        }
    FAIL() << button;
}

void GuiTest::addFromMenu(const char* button, const QString& text) {
    QTimer::singleShot(50, window_.get(), [text] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (auto* const one : menu->actions())
            if (one->text() == text)
                menu->setActiveAction(one);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    QTest::mouseClick(&child<QWidget>(button), Qt::LeftButton);
    settle();
}

QStringList GuiTest::offeredByAddMenu() {
    QStringList texts;
    QTimer::singleShot(50, window_.get(), [&texts] {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        ASSERT_NE(menu, nullptr);
        for (auto* const one : menu->actions())
            if (!one->isSeparator())
                texts += one->text();
        QTest::keyClick(menu, Qt::Key_Escape);
    });
    QTest::mouseClick(&child<QWidget>("addButton"), Qt::LeftButton);
    settle();
    return texts;
}

model::Element* GuiTest::element(const char* elementPath) {
    return session().project().model().findElement(elementPath);
}

void GuiTest::select(const char* elementPath) {
    auto* const wanted = element(elementPath);
    ASSERT_NE(wanted, nullptr) << elementPath;
    child<TreePanel>().select(*wanted);
    settle();
}

FormRow* GuiTest::rowOf(const char* label) {
    for (auto* const row : child<FormPanel>().findChildren<FormRow*>())
        if (toQt(row->field().control().texts().label) == QString::fromUtf8(label))
            return row;
    return nullptr;
}

const QLabel* GuiTest::errorLabel(const char* label) {
    const auto* const row = rowOf(label);
    return row == nullptr ? nullptr
                          : row->findChild<QLabel*>(row->field().widget().objectName() +
                                                    QStringLiteral(" error"));
}

QString GuiTest::errorAt(const char* label) {
    const auto* const error = errorLabel(label);
    return error == nullptr || error->isHidden() ? QString() : error->text();
}

void GuiTest::type(const char* label, const char* text) {
    auto* const line = field<QLineEdit>(label);
    ASSERT_NE(line, nullptr) << label;
    QTest::mouseClick(line, Qt::LeftButton);
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, QString::fromUtf8(text));
    settle();
}

QString GuiTest::shown(const char* label) {
    const auto* const line = field<QLineEdit>(label);
    return line == nullptr ? QStringLiteral("(no such field)") : line->text();
}

QStringList GuiTest::column(const QAbstractItemView& view, int column) {
    QStringList texts;
    for (int row = 0; row != view.model()->rowCount(); ++row)
        texts += view.model()->index(row, column).data().toString();
    return texts;
}

int GuiTest::columnOf(const char* heading) {
    const auto& model = *table().model();
    for (int i = 0; i != model.columnCount(); ++i)
        if (model.headerData(i, Qt::Horizontal) == heading)
            return i;
    return -1;
}

void GuiTest::click(QAbstractItemView& view, const QModelIndex& index) {
    view.scrollTo(index);
    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                      view.visualRect(index).center());
}

void GuiTest::dropFile(QWidget& part, const QString& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    data.setText(file);
    const QPointF middle = part.rect().center();
    QDragEnterEvent enter(middle.toPoint(), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&part, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&part, &drop);
    settle();
}

void GuiTest::confirmImport() {
    const auto button = [this] {
        return window_->findChild<QPushButton*>(QStringLiteral("importNow"));
    };
    ASSERT_TRUE(settleUntil([&] { return button() != nullptr; })) << notice().toStdString();
    QTest::mouseClick(button(), Qt::LeftButton);
    settle();
}

void GuiTest::importExample() {
    dropFile(*window_, example("bottling-line.db"));
    ASSERT_NE(element("/PLC/Line/Enabled"), nullptr) << notice().toStdString();
}

} // namespace corvane::workbench::gui
