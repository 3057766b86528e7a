#include "GuiTesting.hpp"

#include <QLabel>

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

TEST_F(GuiTest, WhatIsSuspiciousStandsBehindTheProblems) {
    importExample();
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "DB4"); // that of the next one
    ASSERT_TRUE(settleUntil([&] { return problems().model()->rowCount() == 2; }));
    EXPECT_EQ(column(problems(), 0),
              QStringList({"Please enter the network address of the target PLC",
                           "Warning: shares bytes 4 to 5 of DB51 with “/PLC/Line/SpeedSetpoint”"}));
    EXPECT_EQ(column(problems(), 1), QStringList({"/PLC", "/PLC/Line/SpeedActual"}));
    const auto iconOf = [&](int row) {
        const auto index = problems().model()->index(row, 0);
        return index.data(Qt::DecorationRole).value<QIcon>().pixmap(16).toImage();
    };
    EXPECT_NE(iconOf(0), iconOf(1));
    const auto titles = window().findChild<ProblemsPanel*>()->findChildren<QLabel*>();
    ASSERT_EQ(titles.size(), 1);
    EXPECT_EQ(titles[0]->text(), "1 problem, 1 warning");

    click(problems(), problems().model()->index(1, 0));
    settle();
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedActual"));
    trigger(Command::undo);
    EXPECT_TRUE(settleUntil([&] { return problems().model()->rowCount() == 1; }));
}

// There may be as many as elements; all are counted.
TEST_F(GuiTest, ManyWarningsAreNotAllListed) {
    window().openFiles({writeFile("large.json", largeProject())});
    const auto total = [&] { return child<ProblemsPanel>().model().total(Severity::warning); };
    ASSERT_TRUE(settleUntil([&] { return total() == 29'999; }));
    EXPECT_EQ(problems().model()->rowCount(), 2 * static_cast<int>(kMaxListedProblems));
    trigger(Command::newProject);
    EXPECT_TRUE(settleUntil([&] { return problems().model()->rowCount() == 0; }));
}

} // namespace corvane::workbench::gui
