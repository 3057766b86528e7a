#include "GuiTesting.hpp"

namespace corvane::workbench::gui {

namespace {

class MovingTest : public GuiTest {
protected:
    MovingTest() { importExample(); }

    QStringList namesBelow(const char* elementPath) {
        QStringList names;
        for (const auto& child : element(elementPath)->childElements())
            names += QString::fromStdString(child->name());
        return names;
    }

    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        tree().setFocus();
        QTest::keyClick(&tree(), key, modifiers);
        settle();
    }
};

} // namespace

TEST_F(MovingTest, TheKeyboardMovesElementsAmongTheirSiblings) {
    const QStringList before{"Default Command", "Line", "Filler", "Recipe", "DB50"};
    ASSERT_EQ(namesBelow("/PLC"), before);
    child<TreePanel>().select({element("/PLC/Filler"), element("/PLC/Recipe")});
    press(Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(namesBelow("/PLC"),
              QStringList({"Default Command", "Filler", "Recipe", "Line", "DB50"}));
    EXPECT_EQ(child<TreePanel>().selected(),
              std::vector({element("/PLC/Filler"), element("/PLC/Recipe")}));

    for (int i = 0; i != 3; ++i)
        press(Qt::Key_Down, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(namesBelow("/PLC"),
              QStringList({"Default Command", "Line", "DB50", "Filler", "Recipe"}));
    for (int i = 0; i != 3; ++i)
        trigger(Command::undo);
    EXPECT_EQ(namesBelow("/PLC"), before);
}

TEST_F(MovingTest, TheKeyboardMovesElementsToWhereTheyAreAccepted) {
    EXPECT_FALSE(action(Command::putHere).isEnabled());
    select("/PLC/Line/Enabled");
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_NE(element("/PLC/Line/Enabled"), nullptr);

    select("/PLC/Filler");
    EXPECT_TRUE(action(Command::putHere).isEnabled());
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(element("/PLC/Line/Enabled"), nullptr);
    EXPECT_EQ(namesBelow("/PLC/Filler").last(), "Enabled");
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Filler/Enabled"));
    EXPECT_FALSE(action(Command::putHere).isEnabled());
}

TEST_F(MovingTest, WhatAnElementDoesNotAcceptIsPutBehindIt) {
    select("/PLC/Line/Enabled");
    press(Qt::Key_X, Qt::ControlModifier);
    select("/PLC/Line/EmergencyStop");
    press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(namesBelow("/PLC/Line").mid(0, 4),
              QStringList({"Running", "EmergencyStop", "Enabled", "SpeedSetpoint"}));
}

TEST_F(MovingTest, WhatIsNoLongerThereCannotBePut) {
    select("/PLC/Line");
    press(Qt::Key_X, Qt::ControlModifier);
    EXPECT_TRUE(action(Command::putHere).isEnabled());
    press(Qt::Key_Delete);
    EXPECT_EQ(element("/PLC/Line"), nullptr);
    select("/PLC");
    EXPECT_FALSE(action(Command::putHere).isEnabled());
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    select("/PLC/Filler");
    press(Qt::Key_X, Qt::ControlModifier);
    trigger(Command::newProject);
    EXPECT_FALSE(action(Command::putHere).isEnabled());
}

TEST_F(MovingTest, TheDeleteKeyIsTheTextsWhileANameIsTyped) {
    select("/PLC/Line");
    press(Qt::Key_F2);
    auto* const editor = tree().viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    editor->setCursorPosition(0);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClick(editor, Qt::Key_Return);
    settle();
    EXPECT_NE(element("/PLC/ine"), nullptr);
}

} // namespace corvane::workbench::gui
