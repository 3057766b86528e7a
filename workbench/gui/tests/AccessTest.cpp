#include "GuiTesting.hpp"

#include <corvane/workbench/i18n/Translate.hpp>

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QMenu>
#include <QMenuBar>

namespace corvane::workbench::gui {

namespace {

/// The menus of the bar and those inside them.
QList<QMenu*> menuBarMenus(const QMainWindow& window) {
    QList<QMenu*> menus;
    for (const auto* const top : window.menuBar()->actions()) {
        menus += top->menu();
        for (const auto* const inner : top->menu()->actions())
            if (inner->menu() != nullptr)
                menus += inner->menu();
    }
    return menus;
}

} // namespace

TEST_F(GuiTest, EveryFieldAndListHasANameForScreenReaders) {
    importExample();
    select("/PLC/Line/OrderNumber");
    trigger(Command::showTable);
    for (const auto* const widget : window().findChildren<QWidget*>()) {
        const bool speaks = qobject_cast<const QAbstractItemView*>(widget) != nullptr ||
                            qobject_cast<const QLineEdit*>(widget) != nullptr ||
                            qobject_cast<const QComboBox*>(widget) != nullptr ||
                            qobject_cast<const QAbstractSpinBox*>(widget) != nullptr;
        const bool isPart = widget->parentWidget() != nullptr &&
                            (qobject_cast<const QAbstractSpinBox*>(widget->parentWidget()) ||
                             qobject_cast<const QComboBox*>(widget->parentWidget()) ||
                             qobject_cast<const QAbstractItemView*>(widget->parentWidget()) ||
                             widget->window() != &window());
        if (!speaks || isPart)
            continue;
        EXPECT_FALSE(widget->accessibleName().isEmpty())
            << widget->metaObject()->className() << " " << qPrintable(widget->objectName());
    }
    for (const auto* const button : window().findChildren<QAbstractButton*>())
        if (button->isVisible() && button->text().isEmpty() &&
            button->focusPolicy() != Qt::NoFocus) {
            EXPECT_FALSE(button->accessibleName().isEmpty()) << qPrintable(button->objectName());
        }
}

TEST_F(GuiTest, EveryCommandIsInAMenuAndNoShortcutIsUsedTwice) {
    QStringList keys;
    QList<QAction*> inMenus;
    for (auto* const menu : menuBarMenus(window()))
        inMenus += menu->actions();
    for (const auto& info : kCommands) {
        auto& one = action(info.id);
        EXPECT_TRUE(inMenus.contains(&one)) << info.name;
        const auto key = one.shortcut().toString();
        if (key.isEmpty())
            continue;
        // The table takes its own keys before the window does.
        if (one.shortcutContext() == Qt::WidgetShortcut)
            continue;
        EXPECT_FALSE(keys.contains(key)) << info.name;
        keys += key;
    }
}

TEST_F(GuiTest, EveryTextPassesThroughTranslation) {
    i18n::setTranslator([](std::string_view, std::string_view text) {
        return std::optional(u"«" + std::u16string(text.begin(), text.end()) + u"»");
    });
    reopenWindow();
    EXPECT_TRUE(window().windowTitle().contains("«"));
    for (const auto& info : kCommands)
        EXPECT_TRUE(action(info.id).text().startsWith("«"));
    for (const auto* const button : window().findChildren<QAbstractButton*>())
        if (!button->text().isEmpty() && button->isVisible()) {
            EXPECT_TRUE(button->text().startsWith("«")) << qPrintable(button->text());
        }
    EXPECT_TRUE(child<QLineEdit>("treeFilter").placeholderText().startsWith("«"));
    i18n::setTranslator({});
}

// Typing after a jump replaces what the field holds.
TEST_F(GuiTest, AJumpToAFieldSelectsItsContent) {
    importExample();
    select("/PLC");
    type("Address", "10.0.0.1");
    trigger(Command::showTree);
    press(Qt::Key_2, Qt::AltModifier);
    auto* const address = field<QLineEdit>("Address");
    ASSERT_TRUE(address->hasFocus());
    EXPECT_EQ(address->selectedText(), "10.0.0.1");
    QTest::keyClicks(address, QStringLiteral("192.168.0.1"));
    settle();
    EXPECT_EQ(shown("Address"), "192.168.0.1");

    select("/PLC/Line/SpeedSetpoint");
    type("Address", "MW4");
    trigger(Command::showTree);
    press(Qt::Key_F8);
    EXPECT_EQ(field<QLineEdit>("Address")->selectedText(), "MW4");
}

} // namespace corvane::workbench::gui
