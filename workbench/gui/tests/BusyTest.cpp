#include "GuiTesting.hpp"

#include "workbench/gui/Text.hpp"

#include <QProgressBar>
#include <QTreeView>

#include <chrono>
#include <thread>

namespace corvane::workbench::gui {

namespace {

void runFor(BusyRunner& runner, std::chrono::milliseconds time, bool& done) {
    runner.run(
        QStringLiteral("Working"), [time] { std::this_thread::sleep_for(time); },
        [&done](const std::exception_ptr&) { done = true; });
}

} // namespace

TEST_F(GuiTest, aJobWithinABlinkIsNotSeen) {
    bool done = false;
    bool began = false;
    QObject::connect(&session().runner(), &BusyRunner::began, &window(), [&] { began = true; });
    runFor(session().runner(), std::chrono::milliseconds(1), done);
    EXPECT_TRUE(done);
    EXPECT_FALSE(began);
}

TEST_F(GuiTest, aLongJobShowsProgressAfterASecondAndTheWindowLives) {
    bool done = false;
    auto& runner = session().runner();
    auto& page = child<BusyPage>();
    const auto& bar = child<QProgressBar>();
    runFor(runner, std::chrono::milliseconds(1700), done);
    EXPECT_TRUE(page.isVisible());
    EXPECT_FALSE(bar.isVisible());
    QTest::qWait(500);
    EXPECT_FALSE(bar.isVisible());
    QTest::qWait(700);
    EXPECT_TRUE(bar.isVisible());
    EXPECT_FALSE(done);

    // The project belongs to the job now: commands are dropped, and the window does not close.
    action(Command::newProject).trigger();
    EXPECT_EQ(session().add(session().root(), *plugins_.findClass("@Skill.S7.PLC")), nullptr);
    window().close();
    EXPECT_TRUE(window().isVisible());
    EXPECT_TRUE(settleUntil([&] { return done; }));
    EXPECT_FALSE(page.isVisible());
}

TEST_F(GuiTest, whatAJobThrowsReachesItsCaller) {
    QString message;
    session().runner().run(
        QStringLiteral("Failing"), [] { throw std::runtime_error("no such luck"); },
        [&](const std::exception_ptr& failure) { message = messageOf(failure); });
    EXPECT_TRUE(settleUntil([&] { return !message.isEmpty(); }));
    EXPECT_EQ(message, "no such luck");
}

// A project of this size is edited beside the window.
TEST_F(GuiTest, aLargeProjectIsEditedUndoneAndImportedInto) {
    QByteArray items;
    for (int i = 0; i != 30'000; ++i)
        items += QByteArray(i == 0 ? "" : ",") + R"({"@Skill.S7.Item":{"name":"i)" +
                 QByteArray::number(i) + R"(","address":"DB0"}})";
    window().openFiles({writeFile("large.json", R"({"corvane":1,"elements":[{"@Skill.S7.PLC":)"
                                                R"({"name":"P","children":[{"@Skill.S7.DataBlock":)"
                                                R"({"name":"B","DBNumber":3,"children":[)" +
                                                    items + "]}}]}}]}")});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    select("/P/B");
    session().setField(*element("/P/B"), {u"DB number", std::uint64_t{9}});
    settle();
    select("/P/B/i29999");
    EXPECT_EQ(shown("Effective address"), "DB9.DB0");
    trigger(Command::undo);
    EXPECT_EQ(child<TreePanel>().current(), element("/P/B/i29999"));
    EXPECT_EQ(shown("Effective address"), "DB3.DB0");
    EXPECT_TRUE(child<QTreeView>("projectTree").isExpanded(tree().currentIndex().parent()));

    window().openFiles({example("bottling-line.db")});
    ASSERT_TRUE(settleUntil([&] { return element("/P/Line") != nullptr; }));
    trigger(Command::undo);
    EXPECT_EQ(element("/P/Line"), nullptr);
    select("/P/B");
    trigger(Command::remove);
    EXPECT_EQ(element("/P/B"), nullptr);
    trigger(Command::undo);
    EXPECT_NE(element("/P/B/i29999"), nullptr);
}

} // namespace corvane::workbench::gui
