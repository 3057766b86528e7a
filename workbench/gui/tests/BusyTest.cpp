#include "GuiTesting.hpp"

#include "workbench/gui/look/Text.hpp"

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeView>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace corvane::workbench::gui {

namespace {

void runFor(BusyRunner& runner, std::chrono::milliseconds time, bool& done) {
    runner.run(
        QStringLiteral("Working"), [time] { std::this_thread::sleep_for(time); },
        [&done](const std::exception_ptr&) { done = true; });
}

} // namespace

TEST_F(GuiTest, AJobWithinABlinkIsNotSeen) {
    bool done = false;
    bool began = false;
    QObject::connect(&session().runner(), &BusyRunner::began, &window(), [&] { began = true; });
    runFor(session().runner(), std::chrono::milliseconds(1), done);
    EXPECT_TRUE(done);
    EXPECT_FALSE(began);
}

TEST_F(GuiTest, ALongJobShowsProgressAfterASecondAndTheWindowLives) {
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

// A change of so many rows is made beside the window.
TEST_F(GuiTest, AChangeOfManyRowsIsStoppedWithNothingHalfDone) {
    window().openFiles({writeFile("large.json", largeProject())});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    select("/P/B");
    trigger(Command::showTable);
    ASSERT_TRUE(settleUntil([&] { return table().model()->rowCount() == 30'000; }));
    table().setFocus();
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_E, Qt::ControlModifier);
    auto& which = child<QComboBox>("bulkField");
    which.setCurrentIndex(which.findText(QStringLiteral("Address")));
    settle();
    auto* const value = child<BulkEditBar>().findChild<QLineEdit*>(QStringLiteral("address"));
    ASSERT_NE(value, nullptr);
    value->setFocus();
    value->selectAll();
    QTest::keyClicks(value, QStringLiteral("DB77"));
    // However quick the machine is, the job has not begun by then.
    auto& runner = session().runner();
    QObject::connect(&runner, &BusyRunner::preparing, &window(), [&runner] { runner.stop(); });
    QTest::keyClick(value, Qt::Key_Return);
    ASSERT_TRUE(settleUntil([&] { return !session().isBusy(); }));
    EXPECT_TRUE(notice().contains("stopped")) << qPrintable(notice());
    EXPECT_EQ(child<NoticeBar>().kind(), NoticeBar::Kind::information);
    EXPECT_FALSE(action(Command::undo).isEnabled());
    for (const char* const path : {"/P/B/i0", "/P/B/i12000", "/P/B/i29999"}) {
        select(path);
        EXPECT_EQ(shown("Address"), "DB0") << path;
    }
}

TEST_F(GuiTest, ALargeRemovalIsUndoneBesideTheWindow) {
    window().openFiles({writeFile("large.json", largeProject())});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    select("/P/B");
    trigger(Command::remove);
    ASSERT_TRUE(settleUntil([&] { return element("/P/B") == nullptr; }));
    bool prepared = false;
    QObject::connect(&session().runner(), &BusyRunner::preparing, &window(),
                     [&] { prepared = true; });
    trigger(Command::undo);
    EXPECT_TRUE(prepared);
    EXPECT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
}

TEST_F(GuiTest, AJobThatTellsHowFarItIsCanBeStoppedByAButton) {
    auto& runner = session().runner();
    auto& bar = child<QProgressBar>();
    std::atomic<int> rounds = 0;
    bool done = false;
    runner.run(
        QStringLiteral("Counting"),
        [&] {
            while (runner.tell(30, 100)) {
                ++rounds;
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        },
        [&done](const std::exception_ptr&) { done = true; }, BusyRunner::Stoppable::yes);
    auto& stop = child<QPushButton>("stopJob");
    QTest::qWait(1300);
    EXPECT_TRUE(stop.isVisible());
    EXPECT_EQ(bar.maximum(), 100);
    EXPECT_EQ(bar.value(), 30);
    EXPECT_FALSE(done);
    QTest::mouseClick(&stop, Qt::LeftButton);
    EXPECT_TRUE(settleUntil([&] { return done; }));

    // Others show no such button.
    done = false;
    runFor(runner, std::chrono::milliseconds(1300), done);
    QTest::qWait(1200);
    EXPECT_FALSE(stop.isVisible());
    EXPECT_EQ(bar.maximum(), 0);
    EXPECT_TRUE(settleUntil([&] { return done; }));
}

TEST_F(GuiTest, WhatAJobThrowsReachesItsCaller) {
    QString message;
    session().runner().run(
        QStringLiteral("Failing"), [] { throw std::runtime_error("no such luck"); },
        [&](const std::exception_ptr& failure) { message = messageOf(failure); });
    EXPECT_TRUE(settleUntil([&] { return !message.isEmpty(); }));
    EXPECT_EQ(message, "no such luck");
}

// Who holds something of the model lets it go where the model is owned: each of these says whether
// its thread was the owner when it went.
TEST_F(GuiTest, WhatAJobHoldsGoesWhileItsThreadOwnsTheModel) {
    std::vector<bool> owned;
    const auto witness = [&owned] {
        return std::shared_ptr<void>(
            nullptr, [&owned](void*) { owned.push_back(utils::thread::ownsModel()); });
    };
    auto& runner = session().runner();
    bool done = false;
    // The first answer begins a job that takes longer than the answer.
    runner.run(
        QStringLiteral("First"), [held = witness()] {},
        [&, held = witness()](const std::exception_ptr&) {
            EXPECT_TRUE(utils::thread::ownsModel());
            runFor(runner, std::chrono::milliseconds(200), done);
        });
    EXPECT_FALSE(utils::thread::ownsModel());
    runner.letGo(witness());
    EXPECT_EQ(owned.size(), 1U); // what the job held
    ASSERT_TRUE(settleUntil([&] { return done; }));
    EXPECT_TRUE(utils::thread::ownsModel());
    EXPECT_EQ(owned, std::vector<bool>(3, true));
    runner.letGo(witness());
    EXPECT_EQ(owned.size(), 4U);
}

// The window's thread has had things to destroy while the merge was under way.
TEST_F(GuiTest, ALargeFileIsImportedIntoANewElementAgainAndAgain) {
    constexpr int kVariables = 120'000;
    const auto file = writeFile(
        "large.db", "DATA_BLOCK \"Large\"\n{ S7_Optimized_Access := 'FALSE' }\nVERSION : 0.1\n"
                    "STRUCT\nv : Array[1.." +
                        QByteArray::number(kVariables) +
                        "] of Bool;\nEND_STRUCT;\nBEGIN\nEND_DATA_BLOCK\n");
    const auto last = "/PLC/Large/v[" + std::to_string(kVariables) + "]";
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    for (int round = 0; round != 2; ++round) {
        window().openFiles({file});
        ASSERT_TRUE(settleUntil([&] { return !session().isBusy() && !session().isEmpty(); }));
        ASSERT_NE(element(last.c_str()), nullptr) << notice().toStdString();
        trigger(Command::newProject);
        ASSERT_TRUE(settleUntil([&] { return session().isEmpty(); }));
    }
}

// A project of this size is edited beside the window.
TEST_F(GuiTest, ALargeProjectIsEditedUndoneAndImportedInto) {
    window().openFiles({writeFile("large.json", largeProject())});
    ASSERT_TRUE(settleUntil([&] { return element("/P/B/i29999") != nullptr; }));
    select("/P/B");
    session().setField(*element("/P/B"), rowOf("DB number")->field().control(), std::uint64_t{9});
    settle();
    select("/P/B/i29999");
    EXPECT_EQ(shown("Effective address"), "DB9.DB0");
    trigger(Command::undo);
    EXPECT_EQ(child<TreePanel>().current(), element("/P/B/i29999"));
    EXPECT_EQ(shown("Effective address"), "DB3.DB0");
    EXPECT_TRUE(child<QTreeView>("projectTree").isExpanded(tree().currentIndex().parent()));

    window().openFiles({example("bottling-line.db")});
    confirmImport();
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
