#include "GuiTesting.hpp"

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QScrollBar>
#include <QTabWidget>

namespace corvane::workbench::gui {

namespace {

/// "/P/D": 65,536 bytes, one item each, "b0" to "b65535".
QByteArray largeBlock() {
    QByteArray items;
    for (int i = 0; i != 65'536; ++i)
        items += QByteArray(i == 0 ? "" : ",") + R"({"@Skill.S7.Item":{"name":"b)" +
                 QByteArray::number(i) + R"(","address":"DB)" + QByteArray::number(i) + "\"}}";
    return R"({"corvane":1,"elements":[{"@Skill.S7.PLC":{"name":"P","children":[)"
           R"({"@Skill.S7.DataBlock":{"name":"D","DBNumber":3,"children":[)" +
           items + "]}}]}}]}";
}

} // namespace

class MemoryTest : public GuiTest {
public:
    MemoryView& view() { return child<MemoryView>("memoryView"); }
    QString title() { return child<QLabel>("memoryTitle").text(); }
    /// Shows the memory of an element, once it is there.
    void showMemoryOf(const char* elementPath) {
        window().resize(1'900, 700); // sixteen bytes in a row have room
        select(elementPath);
        trigger(Command::showMemory);
    }
    QPoint placeOf(std::uint64_t byte, std::uint64_t bit = 0) {
        return view().rectOf(byte * 8 + bit).center();
    }
    void clickAt(const QPoint& place) {
        QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, place);
        settle();
    }
};

TEST_F(MemoryTest, OfABlockAndOfWhatLiesInIt) {
    importExample();
    showMemoryOf("/PLC/Line");
    EXPECT_EQ(title(), "/PLC/Line (DB51): 120 bytes, 18 elements, 3 gaps, 0 overlaps");
    EXPECT_TRUE(view().hasFocus());
    EXPECT_EQ(view().current(), nullptr);
    select("/PLC/Line/SpeedSetpoint");
    EXPECT_EQ(view().current(), element("/PLC/Line/SpeedSetpoint"));
    EXPECT_TRUE(title().startsWith("/PLC/Line (DB51)"));
    select("/PLC");
    EXPECT_FALSE(view().map());
    EXPECT_TRUE(title().startsWith("Select a block")) << qPrintable(title());
    EXPECT_FALSE(child<QComboBox>("memoryWidth").isVisible());
}

TEST_F(MemoryTest, TellsWhatIsPointedAt) {
    importExample();
    showMemoryOf("/PLC/Line");
    EXPECT_EQ(view().textAt(placeOf(0, 1)), "/PLC/Line/Running\nBool\nDB51.DB0.1\nbit 0.1");
    EXPECT_EQ(view().textAt(placeOf(2)), "/PLC/Line/SpeedSetpoint\nInt\nDB51.DB2\nbytes 2 to 3");
    EXPECT_EQ(view().textAt(placeOf(1)), "Nothing lies here: bits 0.3 to 1.7");
    EXPECT_EQ(view().textAt({1, 1}), "");
}

TEST_F(MemoryTest, AClickGoesToTheElement) {
    importExample();
    showMemoryOf("/PLC/Line");
    clickAt(placeOf(2));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedSetpoint"));
    clickAt(placeOf(0, 1));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Running"));
    clickAt(placeOf(1)); // nothing is there
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/Running"));
    EXPECT_EQ(child<QTabWidget>().currentWidget(), &child<MemoryPanel>())
        << "stays to be looked at";

    view().setFocus();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedSetpoint"));
    press(Qt::Key_Left);
    EXPECT_EQ(view().current(), element("/PLC/Line/EmergencyStop"));
    EXPECT_TRUE(view().accessibleDescription().startsWith("/PLC/Line/EmergencyStop\nBool"));
}

TEST_F(MemoryTest, FollowsWhatIsChanged) {
    importExample();
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "DB4"); // that of the next one
    showMemoryOf("/PLC/Line/SpeedSetpoint");
    EXPECT_TRUE(title().endsWith(", 1 overlap")) << qPrintable(title());
    EXPECT_EQ(view().textAt(placeOf(4)), "Several elements lie here:\n\n"
                                         "/PLC/Line/SpeedSetpoint\nInt\nDB51.DB4\nbytes 4 to 5\n\n"
                                         "/PLC/Line/SpeedActual\nInt\nDB51.DB4\nbytes 4 to 5");
    clickAt(placeOf(4));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedActual"));
    clickAt(placeOf(4));
    EXPECT_EQ(child<TreePanel>().current(), element("/PLC/Line/SpeedSetpoint"));

    trigger(Command::undo);
    EXPECT_TRUE(title().endsWith(", 0 overlaps")) << qPrintable(title());
    trigger(Command::remove);
    EXPECT_TRUE(title().contains("17 elements")) << qPrintable(title());
    dialogs_.unsaved = Dialogs::Unsaved::discard;
    trigger(Command::newProject);
    EXPECT_FALSE(view().map());
}

// What is hatched and dotted differs without colours, too: two pixels of it are not alike.
TEST_F(MemoryTest, MarksOverlapsAndGapsNotByColourAlone) {
    importExample();
    select("/PLC/Line/SpeedSetpoint");
    type("Address", "DB4");
    showMemoryOf("/PLC/Line");
    const auto picture =
        view().viewport()->grab().toImage().convertToFormat(QImage::Format_Grayscale8);
    const auto shadesAt = [&](std::uint64_t byte) {
        const auto box = view().rectOf(byte * 8 + 4).united(view().rectOf(byte * 8 + 7));
        QSet<QRgb> shades;
        for (int x = box.left() + 1; x < box.right(); ++x)
            shades += picture.pixel(x, box.top() + 3);
        return shades.size();
    };
    EXPECT_GT(shadesAt(1), 1) << "a gap";
    EXPECT_GT(shadesAt(5), 1) << "an overlap";
    EXPECT_EQ(shadesAt(7), 1) << "one element, beside its name";
}

TEST_F(MemoryTest, TakesEightOrSixteenBytesInARow) {
    importExample();
    showMemoryOf("/PLC/Line");
    EXPECT_TRUE(view().rectOf(8 * 8).top() > view().rectOf(0).top());
    child<QComboBox>("memoryWidth").setCurrentIndex(1);
    settle();
    EXPECT_EQ(view().rectOf(8 * 8).top(), view().rectOf(0).top());
}

TEST_F(MemoryTest, ScrollsThroughALargeBlockByLookingAtWhatIsSeen) {
    window().openFiles({writeFile("large.json", largeBlock())});
    ASSERT_TRUE(settleUntil([&] { return element("/P/D") != nullptr; }));
    showMemoryOf("/P/D");
    ASSERT_TRUE(settleUntil([&] { return view().map().has_value(); }));
    EXPECT_TRUE(title().startsWith("/P/D (DB3): 65")) << qPrintable(title());
    auto& bar = *view().verticalScrollBar();
    bar.setValue(bar.maximum());
    view().viewport()->repaint();
    EXPECT_EQ(view().textAt(placeOf(65'535)), "/P/D/b65535\nByte\nDB3.DB65535\nbyte 65535");
    EXPECT_TRUE(view().rectOf(0).isEmpty()) << "not seen";
    clickAt(placeOf(65'530));
    EXPECT_EQ(child<TreePanel>().current(), element("/P/D/b65530"));

    select("/P/D/b7");
    EXPECT_FALSE(view().rectOf(7 * 8).isEmpty()) << "scrolled to";
}

} // namespace corvane::workbench::gui
