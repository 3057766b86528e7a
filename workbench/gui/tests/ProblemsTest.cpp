#include "GuiTesting.hpp"

namespace corvane::workbench::gui {

TEST_F(GuiTest, AClickOnAProblemLeadsToItsField) {
    importExample();
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "MW4");
    EXPECT_EQ(column(problems(), 1), QStringList({"/PLC", "/PLC/Line/SpeedSetpoint"}));
    EXPECT_EQ(column(problems(), 2), QStringList({"Address", "Address"}));
    EXPECT_EQ(column(problems(), 0)[0], "Please enter the network address of the target PLC");

    trigger(Command::showTable);
    click(problems(), problems().model()->index(0, 0));
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC"));
    ASSERT_NE(field<QLineEdit>("Address"), nullptr);
    EXPECT_TRUE(field<QLineEdit>("Address")->hasFocus());

    QTest::keyClick(&window(), Qt::Key_F8);
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedSetpoint"));
    type("Address", "DB2");
    EXPECT_EQ(problems().model()->rowCount(), 1);
}

TEST_F(GuiTest, ProblemsGoWithTheirElement) {
    importExample();
    EXPECT_EQ(problems().model()->rowCount(), 1);
    select("/PLC");
    trigger(Command::remove);
    EXPECT_EQ(problems().model()->rowCount(), 0);
    trigger(Command::undo);
    EXPECT_EQ(problems().model()->rowCount(), 1);
}

} // namespace corvane::workbench::gui
